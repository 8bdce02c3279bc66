// Plays the X11 tray and prints, in milliseconds, how long each start of a program takes from exec to the
// request to dock its icon: dock_time RUNS COMMAND...
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace {

xcb_atom_t atom(xcb_connection_t *connection, const char *name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t value = reply->atom;
    std::free(reply);
    return value;
}

void waitForDock(xcb_connection_t *connection, xcb_atom_t opcode) {
    constexpr uint32_t requestDock = 0;
    while (xcb_generic_event_t *event = xcb_wait_for_event(connection)) {
        const auto *message = reinterpret_cast<xcb_client_message_event_t *>(event);
        const bool docks = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message->type == opcode &&
                           message->data.data32[1] == requestDock;
        std::free(event);
        if (docks)
            return;
    }
    std::exit(1);
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: dock_time RUNS COMMAND...\n");
        return 2;
    }
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection))
        return 1;
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, window, atom(connection, "_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    const xcb_atom_t opcode = atom(connection, "_NET_SYSTEM_TRAY_OPCODE");
    xcb_flush(connection);

    for (int run = std::atoi(argv[1]); run > 0; --run) {
        const auto start = std::chrono::steady_clock::now();
        const pid_t child = fork();
        if (child == 0) {
            execvp(argv[2], argv + 2);
            _exit(127);
        }
        waitForDock(connection, opcode);
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
        std::printf("%.1f\n", took.count());
        kill(child, SIGTERM);
        waitpid(child, nullptr, 0);
    }
    return 0;
}
