#pragma once

#include "backends/posix/posix_filesystem.h"
#include "backends/qt/qtwindows.h"
#include "contract/core/runtime.h"
#include "contract/implicit_instance.h"
#include "picture_media.h"
#include "support/temporary_folder.h"

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// A display of the rig.
struct TestScreen {
    std::string name;
    Rect rect;
    double pixelRatio = 1.0;
};

/// A runtime with the real windowing back end, on a platform that draws into memory. The displays are the
/// test's own: a main one of 1920 x 1200 with a second of 1920 x 1080 at its right if nothing else is said.
class QtTest : public ::testing::Test {
protected:
    QtTest();
    explicit QtTest(const std::vector<TestScreen>& screens);
    ~QtTest() override;

    /// Makes the first window and shows it, as the program's start does, and waits until it has the keyboard.
    template <class Form> Ref<Form> StartWith() {
        std::string failure;
        EXPECT_TRUE(m_runtime->Start(
            [] {
                Instance<Form>();
                Instance<Form>()->Show();
            },
            failure))
            << failure;
        auto form = Instance<Form>();
        EXPECT_TRUE(Until([&] { return form->Active(); })) << "the console does not come up";
        return form;
    }

    /// Runs one handler as a delivery to the first window.
    void Do(const std::function<void()>& handler);
    /// Lets events pass until the condition holds; false if it does not within 5 s.
    static bool Until(const std::function<bool()>& condition);
    /// Lets all events that are at hand pass, and those that they cause.
    static void Settle();
    /// Displays come, go or change, as the desktop tells it.
    void SetScreens(const std::vector<TestScreen>& screens);

    /// The widget of that name in the window of that name; the window itself for "".
    template <class Widget = QWidget>
    static Widget* Find(const std::string& window, const std::string& name = {}) {
        return qobject_cast<Widget*>(FindWidget(window, name));
    }
    /// What the widget and those over it look like, in device pixels.
    static QImage Look(const std::string& window, const std::string& name);
    /// A key as it comes from the keyboard, to whatever has it.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    [[nodiscard]] PictureMedia& Media() { return m_media; }
    [[nodiscard]] Runtime& TheRuntime() { return *m_runtime; }
    [[nodiscard]] qt::QtWindows& Windows() { return *m_windows; }
    [[nodiscard]] const TemporaryFolder& Folder() const { return m_folder; }

private:
    static QWidget* FindWidget(const std::string& window, const std::string& name);

    TemporaryFolder m_folder;
    PictureMedia m_media;
    posix::PosixFileSystem m_files;
    std::unique_ptr<qt::QtWindows> m_windows;
    std::unique_ptr<Runtime> m_runtime;
};

} // namespace kirolane::tests
