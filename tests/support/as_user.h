#pragma once

#include <functional>
#include <string>

namespace kirolane::tests {

/// Runs a check as an ordinary user, in a child process, which gives up root's rights where the tests run as
/// root. What the check expects and does not get fails the test. Open the folders concerned first
/// (OpenToAll).
void RunAsOrdinaryUser(const std::function<void()>& check);

/// Lets every user read, write and enter.
void OpenToAll(const std::string& path);

} // namespace kirolane::tests
