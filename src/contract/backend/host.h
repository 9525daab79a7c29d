#pragma once

#include "contract/messages.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// What the back ends ask of what stands above them. Main thread, unless said otherwise.

namespace kirolane {

class Window;

/// The lines of WriteErrorLine go there instead, as texts, from now on: an engine's go to whoever runs it.
/// Before the first other thread.
void SendErrorLinesTo(std::function<void(std::string_view)> writer);

namespace host {

/// There is somebody to tell: false before the start and while the program is taken down.
[[nodiscard]] bool Exists();

/// The answer to WindowSystem::Wake: runs what was posted and put off.
void RunPosted();
/// One slice of idle work, the answer to WindowSystem::RequestIdle. True if there is more.
bool RunIdleSlice();
/// A worker of the contract's own is under way, and something will be posted.
[[nodiscard]] bool WorkersUnderWay();

/// Displays came, went or changed. Each window follows (Window::FollowScreens), and where none is left to be
/// seen the console comes, so that nobody is left without keys. Waits for the end of a folder chooser that
/// is up.
void ReportScreensChanged();

/// Hands the application what the program was started with (Application::Event_OpenDocument), an absolute
/// path. What can be neither listed nor read, or does not answer within a second, costs one line. Within the
/// start, once the first window is made.
void OpenDocument(const std::string& nativePath);

/// The console; null before it is made.
[[nodiscard]] std::shared_ptr<Window> Console();
/// Whether anything is known of that path within the running handler's patience, be it that it is not there.
[[nodiscard]] bool FolderAnswers(const std::string& nativePath);

} // namespace host

} // namespace kirolane
