// Plays the X11 tray and prints how long programs take from exec to the request to dock their icon, in
// milliseconds: dock_time ROUNDS PROGRAM... The programs take turns; each round is a line.
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/prctl.h>
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

double start(const char *program, xcb_connection_t *connection, xcb_atom_t opcode) {
    constexpr unsigned longestStart = 20; // seconds; who takes longer will never dock
    alarm(longestStart);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (!std::freopen("/dev/null", "w", stderr)) // a program that is cut short complains
            _exit(127);
        execl(program, program, nullptr);
        _exit(127);
    }
    waitForDock(connection, opcode);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    return took.count();
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: dock_time ROUNDS PROGRAM...\n");
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

    for (int round = std::atoi(argv[1]); round > 0; --round) {
        for (int program = 2; program < argc; ++program)
            std::printf("%.2f ", start(argv[program], connection, opcode));
        std::printf("\n");
    }
    return 0;
}
