// An opened file is the only one that is opened, whatever it says, and nothing goes over the network. Each
// check has its control: a bare libmpv, which follows the same file, trips it.

#include "crafted_files.h"
#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <mpv/client.h>
#include <set>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kirolane::tests {

namespace {

/// Notes the names of the files in a folder that anyone opens, the folder itself as "".
class FolderWatch {
public:
    explicit FolderWatch(const std::string& folder) : m_file(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(inotify_add_watch(m_file, folder.c_str(), IN_OPEN), 0);
    }
    ~FolderWatch() { close(m_file); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    std::set<std::string> Opened() {
        alignas(inotify_event) std::array<char, 65536> buffer{};
        ssize_t count = 0;
        while ((count = read(m_file, buffer.data(), buffer.size())) > 0) {
            for (ssize_t at = 0; at < count;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
                m_opened.insert(event->len > 0 ? event->name : "");
                at += static_cast<ssize_t>(sizeof(inotify_event)) + event->len;
            }
        }
        return m_opened;
    }

private:
    int m_file;
    std::set<std::string> m_opened;
};

/// A port of this machine at which nobody should ring.
class DoorBell {
public:
    DoorBell() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(m_socket, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(m_socket, 8), 0);
        EXPECT_EQ(getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
        m_url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/clip.mp4";
    }
    ~DoorBell() { close(m_socket); }
    DoorBell(const DoorBell&) = delete;
    DoorBell& operator=(const DoorBell&) = delete;

    [[nodiscard]] const std::string& Url() const { return m_url; }
    bool Rang() {
        const int caller = accept(m_socket, nullptr, nullptr);
        if (caller >= 0)
            close(caller);
        m_rang = m_rang || caller >= 0;
        return m_rang;
    }

private:
    int m_socket;
    std::string m_url;
    bool m_rang = false;
};

std::uint32_t NumberAt(const std::string& bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
    return number;
}

/// A QuickTime movie all of whose tracks say that their data lie in another file.
std::string WithExternalData(std::string movie, const std::string& path) {
    const std::string alias = std::string(150, '\0') + std::string("\0\x02", 2) + // an absolute path follows
                              std::string(1, '\0') + static_cast<char>(path.size()) + path +
                              (path.size() % 2 != 0 ? std::string(1, '\0') : "") + "\xFF\xFF" +
                              std::string(2, '\0');
    const std::string entry =
        BigEndian(static_cast<std::uint32_t>(12 + alias.size())) + "alis" + BigEndian(0) + alias;
    const std::string box = BigEndian(static_cast<std::uint32_t>(16 + entry.size())) + "dref" + BigEndian(0) +
                            BigEndian(1) + entry;
    for (std::size_t at = movie.find("dref"); at != std::string::npos;
         at = movie.find("dref", at + box.size())) {
        const std::uint32_t before = NumberAt(movie, at - 4);
        const std::uint32_t grows = static_cast<std::uint32_t>(box.size()) - before;
        for (const char* parent : {"dinf", "minf", "mdia", "trak", "moov"}) {
            const std::size_t name = movie.rfind(parent, at);
            movie.replace(name - 4, 4, BigEndian(NumberAt(movie, name - 4) + grows));
        }
        movie.replace(at - 4, before, box);
    }
    return movie;
}

/// libmpv as it comes plays that file until that holds.
bool PlayBareUntil(const std::string& path, const std::function<bool()>& condition) {
    mpv_handle* handle = mpv_create();
    EXPECT_NE(handle, nullptr);
    for (const auto& [name, value] :
         {std::pair{"vo", "null"}, {"ao", "null"}, {"ytdl", "no"}, {"network-timeout", "1"}})
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

struct Reference {
    const char* name;
    std::string (*content)(const std::string& path, const std::string& url);
};

// clang-format off
const Reference kReferences[] = {
    {"list.mp4",    [](const std::string& path, const std::string& url) { return "#EXTM3U\n" + path + "\n" + url + "\n"; }},
    {"list.mov",    [](const std::string& path, const std::string& url) { return "[playlist]\nFile1=" + path + "\nFile2=" + url + "\nNumberOfEntries=2\n"; }},
    {"concat.mp4",  [](const std::string& path, const std::string& url) { return "ffconcat version 1.0\nfile '" + path + "'\nfile '" + url + "'\n"; }},
    {"edl.m4v",     [](const std::string& path, const std::string& url) { return "# mpv EDL v0\n" + path + "\n" + url + "\n"; }},
    {"stream.mpg",  [](const std::string& path, const std::string& url) { return "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\n" + path + "\n#EXTINF:5,\n" + url + "\n#EXT-X-ENDLIST\n"; }},
    {"cue.wav",     [](const std::string& path, const std::string&)     { return "FILE \"" + path + "\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"; }},
    {"asx.asf",     [](const std::string& path, const std::string& url) { return "<asx version=\"3.0\"><entry><ref href=\"" + path + "\"/></entry><entry><ref href=\"" + url + "\"/></entry></asx>"; }},
    {"asf.wmv",     [](const std::string& path, const std::string& url) { return "[Reference]\r\nRef1=" + url + "\r\nRef2=" + path + "\r\n"; }},
    {"session.qt",  [](const std::string&, const std::string&)          { return std::string("v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video 5004 RTP/AVP 33\n"); }},
    {"text.qt",     [](const std::string&, const std::string& url)      { return "RTSPtext\r\n" + url + "\r\n"; }},
    {"dash.mp4",    [](const std::string&, const std::string& url)      { return "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" mediaPresentationDuration=\"PT5S\"><Period><AdaptationSet><Representation id=\"1\" bandwidth=\"1\"><BaseURL>" + url + "</BaseURL></Representation></AdaptationSet></Period></MPD>"; }},
    {"outside.mov", [](const std::string& path, const std::string&)     { return WithExternalData(Content("clip.mov"), path); }},
};
// clang-format on

} // namespace

class Hermetic : public EngineTest {
protected:
    Hermetic() {
        m_decoys.Write("decoy.mp4", Content("short.mp4"));
        m_decoys.Write("decoy.wav", Content("clip.wav"));
    }
    /// Loads and plays the file in all three players.
    void Open(const std::string& path) {
        CapturedStderr lines;
        const bool twins = LoadTwins(path);
        const bool sound = Sound().Load(path);
        const EngineOrder orders[] = {{&Preview(), {.unload = !twins, .running = true, .seekTo = {}}},
                                      {&Stage(), {.unload = !twins, .running = true, .seekTo = {}}},
                                      {&Sound(), {.unload = !sound, .running = true, .seekTo = {}}}};
        Media().Apply(orders);
        if (twins || sound)
            WaitUntil([&] { return Stage().Position() > 0.2 || Sound().Position() > 0.2; }, 2.0);
        Unload();
        lines.Lines();
    }
    std::string DecoyFor(const std::string& name) {
        return m_decoys.Path(name.ends_with(".wav") ? "decoy.wav" : "decoy.mp4");
    }

    TemporaryFolder m_folder;
    TemporaryFolder m_decoys;
    DoorBell m_bell;
};

TEST_F(Hermetic, NoFileThatAnotherNamesIsOpenedAndNobodyIsCalled) {
    FolderWatch watch(m_decoys.Path());
    for (const Reference& reference : kReferences) {
        const std::string path =
            m_folder.Write(reference.name, reference.content(DecoyFor(reference.name), m_bell.Url()));
        Open(path);
        EXPECT_TRUE(watch.Opened().empty()) << reference.name << " led to " << *watch.Opened().begin();
        EXPECT_FALSE(m_bell.Rang()) << reference.name;
    }
}

TEST_F(Hermetic, NoFileBesideTheOpenedOneIsOpened) {
    const std::string path = m_folder.Write("clip.mp4", Content("clip.mp4"));
    for (const char* sibling : {"clip.srt", "clip.ass", "clip.mp4.conf", "clip.cue", "clip.jpg", "cover.jpg",
                                "clip.m4a", "clip.edl", "clip.sub", "clip.idx", "mpv.conf", "VIDEO_TS.IFO"})
        m_folder.Write(sibling, "1\n00:00:00,000 --> 00:00:04,000\nx\n");
    FolderWatch watch(m_folder.Path());
    Open(path);
    EXPECT_EQ(watch.Opened(), std::set<std::string>{"clip.mp4"});
}

TEST_F(Hermetic, TheControlsTrip) {
    FolderWatch decoys(m_decoys.Path());
    EXPECT_TRUE(PlayBareUntil(m_folder.Write("list.mp4", "#EXTM3U\n" + DecoyFor("list.mp4") + "\n"),
                              [&] { return decoys.Opened().contains("decoy.mp4"); }));
    EXPECT_TRUE(PlayBareUntil(m_folder.Write("net.mp4", "#EXTM3U\n" + m_bell.Url() + "\n"),
                              [&] { return m_bell.Rang(); }));

    const std::string path = m_folder.Write("clip.mp4", Content("clip.mp4"));
    m_folder.Write("clip.srt", "1\n00:00:00,000 --> 00:00:04,000\nx\n");
    FolderWatch siblings(m_folder.Path());
    EXPECT_TRUE(PlayBareUntil(path, [&] { return siblings.Opened().contains("clip.srt"); }));
}

} // namespace kirolane::tests
