#pragma once

#include "backends/posix/posix_filesystem.h"
#include "backends/qt/qtwindows.h"
#include "contract/core/runtime.h"
#include "contract/implicit_instance.h"
#include "picture_media.h"
#include "show_forms.h"
#include "support/temporary_folder.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

struct TestScreen {
    std::string name;
    Rect rect;
    double pixelRatio = 1.0;
};

inline constexpr Rect kMain{0, 0, 1920, 1200};
inline constexpr Rect kStage{1920, 0, 1920, 1080};

/// A runtime with the real windowing back end, on a platform that draws into memory with the test's own
/// displays. The console is up and has the keyboard.
class QtTest : public ::testing::Test {
protected:
    explicit QtTest(const std::vector<TestScreen>& screens = {{"Main", kMain}, {"Stage", kStage}});
    /// On an X server, where nobody manages windows.
    explicit QtTest(const std::string& display);
    ~QtTest() override;
    void SetUp() override;

    /// Runs one handler as a delivery to the console.
    void Do(const std::function<void()>& handler);
    template <class Form> Ref<Form> ShowForm() {
        Do([] { Instance<Form>()->Show(); });
        Settle();
        return Instance<Form>();
    }
    /// A control of the console, or of another form that is there.
    template <class T, class Form = ConsoleShow> static Ref<T> Get(std::string_view name) {
        return Instance<Form>()->template Control<T>(name);
    }
    /// Lets events pass until the condition holds; false if it does not within 5 s.
    static bool Until(const std::function<bool()>& condition);
    /// Lets all events that are at hand pass, and those that they cause.
    static void Settle();
    /// Displays come, go or change, as the desktop tells it.
    static void SetScreens(const std::vector<TestScreen>& screens);

    /// The widget of that name in the window of that name; the window itself for "".
    template <class Widget = QWidget>
    static Widget* Find(const std::string& window, const std::string& name = {}) {
        return qobject_cast<Widget*>(FindWidget(window, name));
    }
    /// What the widget and those over it look like, in device pixels.
    static QImage Look(const std::string& window, const std::string& name);
    /// A key as it comes from the keyboard, to whatever has it.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QGuiApplication::focusWindow(), key, modifiers);
    }
    static void Click(QWidget* widget, QPoint at = {}) {
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, at);
    }

    TemporaryFolder m_folder;
    PictureMedia m_media;

private:
    void Begin(const std::string& platform);
    static QWidget* FindWidget(const std::string& window, const std::string& name);

    posix::PosixFileSystem m_files;

protected:
    std::unique_ptr<qt::QtWindows> m_windows;
    std::unique_ptr<Runtime> m_runtime;
    Ref<ConsoleShow> m_console;
};

} // namespace kirolane::tests
