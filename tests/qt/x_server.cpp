#include "x_server.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <random>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::tests {

XServer::XServer(const std::vector<std::string>& options) {
    std::random_device random;
    for (int tries = 0; tries < 20 && m_x == nullptr; ++tries) {
        m_name = ":" + std::to_string(100 + random() % 30000);
        int ready[2];
        EXPECT_EQ(::pipe(ready), 0);
        std::vector<std::string> words{"Xvfb", m_name,        "-displayfd", "1",         "-screen",
                                       "0",    "1280x900x24", "-noreset",   "-nolisten", "tcp"};
        words.insert(words.end(), options.begin(), options.end());
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t files;
        ::posix_spawn_file_actions_init(&files);
        ::posix_spawn_file_actions_adddup2(&files, ready[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
        EXPECT_EQ(::posix_spawnp(&m_process, "Xvfb", &files, nullptr, arguments.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&files);
        ::close(ready[1]);
        char told = 0;
        const bool up = ::read(ready[0], &told, 1) == 1; // nothing where the number is taken
        while (up && told != '\n' && ::read(ready[0], &told, 1) == 1) {
        }
        ::close(ready[0]);
        if (up)
            m_x = xcb_connect(m_name.c_str(), nullptr);
        else
            ::waitpid(m_process, nullptr, 0);
    }
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_x)).data->root;
}

XServer::~XServer() {
    xcb_disconnect(m_x);
    ::kill(m_process, SIGTERM);
    ::waitpid(m_process, nullptr, 0);
}

std::vector<QRgb> XServer::Pixels(const QRect& area) const {
    const auto asked =
        xcb_get_image(m_x, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<std::int16_t>(area.x()),
                      static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(m_x, asked, nullptr), &std::free);
    if (reply == nullptr)
        return {};
    const auto* pixels = reinterpret_cast<const QRgb*>(xcb_get_image_data(reply.get()));
    std::vector<QRgb> seen(pixels, pixels + area.width() * area.height());
    for (QRgb& pixel : seen)
        pixel &= 0xFFFFFF;
    return seen;
}

bool XServer::Becomes(QPoint at, QColor color) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (Pixels({at, QSize(1, 1)}) != std::vector{color.rgb() & 0xFFFFFF})
        if (std::chrono::steady_clock::now() > deadline)
            return false;
    return true;
}

void XServer::Cover(const QRect& area) {
    m_cover = xcb_generate_id(m_x);
    const std::uint32_t values[] = {0x123456, 1};
    xcb_create_window(m_x, XCB_COPY_FROM_PARENT, m_cover, m_root, static_cast<std::int16_t>(area.x()),
                      static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(m_x, m_cover);
    EXPECT_TRUE(Becomes(area.center(), QColor(0x12, 0x34, 0x56)));
}

void XServer::Uncover() {
    xcb_destroy_window(m_x, m_cover);
    xcb_flush(m_x);
}

} // namespace kirolane::tests
