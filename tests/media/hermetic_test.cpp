// An opened file is the only one that is opened, whatever it says, and nothing goes over the network. Each
// check has its control: a bare libmpv, which follows the same file, trips it.

#include "engine_test.h"
#include "gates.h"
#include "support/captured_stderr.h"

#include <array>
#include <mpv/client.h>
#include <regex>
#include <set>
#include <sys/inotify.h>
#include <unistd.h>

namespace kirolane::tests {

namespace {

using Names = std::set<std::string>;

/// Notes the names of the files in a folder that anyone opens, the folder itself as "".
class FolderWatch {
public:
    explicit FolderWatch(const TemporaryFolder& folder) : m_file(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(inotify_add_watch(m_file, folder.Path().c_str(), IN_OPEN), 0);
    }
    ~FolderWatch() { close(m_file); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    Names Opened() {
        alignas(inotify_event) std::array<char, 65536> buffer{};
        const ssize_t count = read(m_file, buffer.data(), buffer.size());
        for (ssize_t at = 0; at < count;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            m_opened.insert(event->len > 0 ? event->name : "");
            at += static_cast<ssize_t>(sizeof(inotify_event)) + event->len;
        }
        return m_opened;
    }

private:
    int m_file;
    Names m_opened;
};

/// libmpv as it comes plays that file until that holds.
bool PlayBareUntil(const std::string& path, const std::function<bool()>& condition) {
    mpv_handle* handle = mpv_create();
    for (const auto& [name, value] :
         {std::pair{"vo", "null"}, {"ao", "null"}, {"ytdl", "no"}, {"load-unsafe-playlists", "yes"}})
        EXPECT_GE(mpv_set_option_string(handle, name, value), 0) << name;
    EXPECT_GE(mpv_initialize(handle), 0);
    const char* command[] = {"loadfile", path.c_str(), nullptr};
    EXPECT_GE(mpv_command(handle, command), 0);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    bool holds = false;
    while (!(holds = condition()) && std::chrono::steady_clock::now() < deadline)
        mpv_wait_event(handle, 0.05);
    mpv_terminate_destroy(handle);
    return holds;
}

// clang-format off
/// Files that name a decoy and an address at which nobody should call.
const struct {
    const char* name;
    const char* text;
} kReferences[] = {
    {"list.mp4",   "#EXTM3U\nDECOY\nURL\n"},
    {"list.mov",   "[playlist]\nFile1=DECOY\nFile2=URL\nNumberOfEntries=2\n"},
    {"edl.m4v",    "# mpv EDL v0\nDECOY\nURL\n"},
    {"stream.mpg", "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\nDECOY\n#EXTINF:5,\nURL\n#EXT-X-ENDLIST\n"},
    {"asf.wmv",    "[Reference]\r\nRef1=URL\r\nRef2=DECOY\r\n"},
    {"session.qt", "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video 5004 RTP/AVP 33\n"},
};
// clang-format on

} // namespace

class Hermetic : public EngineTest {
protected:
    void Open(const std::string& path) {
        CapturedStderr lines;
        const bool twins = LoadTwins(path);
        const bool sound = Sound().Load(path);
        Order({{&Preview(), {.unload = !twins, .running = true, .seekTo = {}}},
               {&Stage(), {.unload = !twins, .running = true, .seekTo = {}}},
               {&Sound(), {.unload = !sound, .running = true, .seekTo = {}}}});
        if (twins || sound)
            WaitUntil([&] { return Stage().Position() > 0.2 || Sound().Position() > 0.2; }, 2.0);
        Unload();
    }

    TemporaryFolder m_folder;
};

TEST_F(Hermetic, NoFileThatAnotherNamesIsOpenedAndNobodyIsCalled) {
    const TemporaryFolder decoys;
    const std::string decoy = decoys.Write("decoy.mp4", Content("short.mp4"));
    int followed = 0;
    for (const auto& [name, text] : kReferences) {
        const std::string named = std::regex_replace(text, std::regex("DECOY"), decoy);
        const std::string path =
            m_folder.Write(name, std::regex_replace(named, std::regex("URL"), "http://127.0.0.1:9/clip.mp4"));
        FolderWatch watch(decoys);
        const int calls = networkCalls;
        const auto follows = [&] { return !watch.Opened().empty() || networkCalls > calls; };
        Open(path);
        EXPECT_FALSE(follows()) << name;
        followed += PlayBareUntil(path, follows) ? 1 : 0;
    }
    EXPECT_GE(followed, 4) << "versions of libmpv differ";
}

TEST_F(Hermetic, NoFileBesideTheOpenedOneIsOpened) {
    const std::string path = m_folder.Write("clip.mp4", Content("clip.mp4"));
    for (const char* sibling : {"clip.srt", "clip.ass", "clip.mp4.conf", "clip.cue", "clip.jpg", "cover.jpg",
                                "clip.m4a", "clip.edl", "clip.sub", "clip.idx", "mpv.conf", "VIDEO_TS.IFO"})
        m_folder.Write(sibling, "1\n00:00:00,000 --> 00:00:04,000\nx\n");
    FolderWatch watch(m_folder);
    Open(path);
    EXPECT_EQ(watch.Opened(), Names{"clip.mp4"});
    EXPECT_TRUE(PlayBareUntil(path, [&] { return watch.Opened().contains("clip.srt"); }));
}

} // namespace kirolane::tests
