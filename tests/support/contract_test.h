#pragma once

#include "backends/headless/headless.h"
#include "contract/core/runtime.h"
#include "contract/implicit_instance.h"
#include "support/silent_mount.h"
#include "support/temporary_folder.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace kirolane::tests {

inline double SecondsOf(const std::function<void()>& work) {
    const auto began = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
}

/// A runtime on the headless back ends, with files in a temporary folder: its "home" is the user's, its
/// "application" is where the program lies. Both are there, with the settings' place made.
class ContractTest : public ::testing::Test {
protected:
    ContractTest() { EXPECT_EQ(m_files.Prepare(), ""); }
    ~ContractTest() override { m_files.Answers().Open(); } // the runtime waits for its workers

    /// Makes the first window and shows it, as the program's start does.
    template <class Form> Ref<Form> StartWith() {
        std::string failure;
        EXPECT_TRUE(m_runtime->Start([] { Instance<Form>(); }, failure)) << failure;
        return Instance<Form>();
    }

    /// Runs one handler as a delivery to the first window.
    void Do(const std::function<void()>& handler) {
        EXPECT_TRUE(m_runtime->DeliverNow(*m_runtime->Forms().All().at(0), "test", handler));
    }
    /// Lets everything that is under way end: posted calls, threads, workers.
    void Settle() { EXPECT_TRUE(Windows().RunUntilIdle()) << "still busy after 10 s"; }
    void Advance(std::int64_t milliseconds) { Windows().Advance(milliseconds); }

    [[nodiscard]] const TemporaryFolder& Folder() const { return m_folder; }
    [[nodiscard]] Runtime& TheRuntime() { return *m_runtime; }
    [[nodiscard]] headless::HeadlessWindows& Windows() { return m_headless.windows; }
    [[nodiscard]] headless::HeadlessMedia& Media() { return m_headless.media; }
    [[nodiscard]] headless::HandClock& Clock() { return m_headless.clock; }
    [[nodiscard]] SilentMount& Files() { return m_files; }

    /// Ends the runtime and makes a new one, as a second start of the program.
    void Restart() {
        m_runtime.reset();
        Windows().Restart();
        m_runtime = std::make_unique<Runtime>(Windows(), Media(), m_files);
    }

private:
    TemporaryFolder m_folder;
    headless::Headless m_headless;
    SilentMount m_files{m_folder.MakeFolder("home"), m_folder.MakeFolder("application")};
    std::unique_ptr<Runtime> m_runtime = std::make_unique<Runtime>(Windows(), Media(), m_files);
};

} // namespace kirolane::tests
