#pragma once

#include <functional>
#include <string>

namespace kirolane::tests {

/// Runs a body in a child process. 0 where all it expects holds, 1 where something does not (which is told),
/// what it exits with by itself, or the negative of the signal that ended it.
int StatusOfChild(const std::function<void()>& body);

/// Runs a check as an ordinary user, in a child process, which gives up root's rights where the tests run as
/// root. What the check expects and does not get fails the test. `folder` is opened to all before.
void RunAsOrdinaryUser(const std::string& folder, const std::function<void()>& check);

} // namespace kirolane::tests
