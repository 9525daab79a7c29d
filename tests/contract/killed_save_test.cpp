// A text file whose writer is killed at any moment.

#include "backends/posix/posix_filesystem.h"
#include "support/temporary_folder.h"

#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane {
namespace {

constexpr int kLines = 200;
constexpr int kKills = 60;

/// As many lines as the settings have, each of that length.
std::string Lines(char c, std::size_t length) {
    std::string text;
    for (int n = 0; n < kLines; ++n)
        text += std::string(length, c) + "\n";
    return text;
}

/// What a reader of the settings takes: that many lines, whatever follows.
std::string Head(const std::string& text) {
    std::size_t end = 0;
    for (int n = 0; n < kLines && end != std::string::npos; ++n)
        end = text.find('\n', end == 0 ? 0 : end + 1);
    return end == std::string::npos ? text : text.substr(0, end + 1);
}

/// Saves the one and the other in turn until it is killed, and says so before each.
[[noreturn]] void Save(posix::PosixFileSystem& files, const std::string& path, const std::string (&texts)[2],
                       int told) {
    std::string cause;
    for (int n = 0;; ++n) {
        if (::write(told, "x", 1) != 1)
            ::_exit(1);
        const auto sink = files.OpenForWriting(path, cause);
        if (sink == nullptr || !sink->Write(texts[n % 2]).empty())
            ::_exit(1);
    }
}

/// Calls look with what each of the kills has left.
template <class Look> void KillWhileSaving(const std::string (&texts)[2], const Look& look) {
    const tests::TemporaryFolder folder;
    posix::PosixFileSystem files(folder.Path(), folder.Path());
    const std::string path = folder.Write("text", texts[1]);
    for (int kill = 0; kill < kKills; ++kill) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        ASSERT_NE(child, -1);
        if (child == 0) {
            ::close(ends[0]);
            Save(files, path, texts, ends[1]);
        }
        ::close(ends[1]);
        char told = 0;
        for (int saves = 0; saves <= kill % 7; ++saves)
            EXPECT_EQ(::read(ends[0], &told, 1), 1) << "the writer failed";
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ::close(ends[0]);
        std::string content;
        std::string cause;
        ASSERT_TRUE(files.ReadText(path, content, cause)) << cause;
        look(content);
    }
}

TEST(KilledSave, LeavesTheOldOrTheNewTextWhereItFitsOnePage) {
    const std::string texts[2] = {Lines('a', 5), Lines('b', 19)};
    int left[2] = {};
    KillWhileSaving(texts, [&](const std::string& content) {
        const std::string head = Head(content);
        ASSERT_TRUE(head == texts[0] || head == texts[1]) << content.size() << " bytes: " << content;
        ++left[head == texts[0] ? 0 : 1];
    });
    EXPECT_GT(left[0], 0);
    EXPECT_GT(left[1], 0);
}

TEST(KilledSave, NeverLeavesALongTextEmpty) {
    const std::string texts[2] = {Lines('a', 100), Lines('b', 5000)};
    KillWhileSaving(texts, [&](const std::string& content) { ASSERT_GE(content.size(), texts[0].size()); });
}

} // namespace
} // namespace kirolane
