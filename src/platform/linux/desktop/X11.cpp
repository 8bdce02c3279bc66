#include "platform/linux/desktop/X11.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <memory>

#include <X11/XKBlib.h>
#include <xcb/xcb.h>

namespace quorbit::x11 {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

xcb_connection_t *connection() {
    const auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

int screenNumber() {
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

xcb_atom_t atom(xcb_connection_t *server, const QByteArray &name) {
    const auto cookie =
        xcb_intern_atom(server, false, static_cast<std::uint16_t>(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

QByteArray ofScreen(const char *selection) {
    return selection + QByteArray::number(screenNumber());
}

bool hasOwner(const QByteArray &selection) {
    auto *server = connection();
    if (!server)
        return false;
    const auto cookie = xcb_get_selection_owner(server, atom(server, selection));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(server, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace

bool isSession() {
    return connection() != nullptr;
}

bool hasXTest() {
    auto *server = connection();
    if (!server)
        return false;
    constexpr char name[] = "XTEST";
    const auto cookie = xcb_query_extension(server, sizeof name - 1, name);
    const Reply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(server, cookie, nullptr));
    return reply && reply->present != 0;
}

bool hasCompositor() {
    return hasOwner(ofScreen("_NET_WM_CM_S"));
}

bool hasTray() {
    return hasOwner(ofScreen("_NET_SYSTEM_TRAY_S"));
}

bool hasSettingsDaemon() {
    return hasOwner(ofScreen("_XSETTINGS_S"));
}

bool announcesTray(const QByteArray &eventType, const void *message) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
        return false;
    auto *server = connection();
    const auto *announcement = reinterpret_cast<const xcb_client_message_event_t *>(event);
    return server && announcement->type == atom(server, "MANAGER") &&
           announcement->data.data32[1] == atom(server, ofScreen("_NET_SYSTEM_TRAY_S"));
}

bool useDetectableAutoRepeat() {
    const auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 && x11->display() && XkbSetDetectableAutoRepeat(x11->display(), True, nullptr) == True;
}

void activate(const QWindow &window, std::uint32_t timestamp) {
    auto *server = connection();
    if (!server)
        return;
    constexpr std::uint32_t fromApplication = 1;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = static_cast<xcb_window_t>(window.winId());
    request.type = atom(server, "_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromApplication;
    request.data.data32[1] = timestamp;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    xcb_send_event(server, false, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(server);
}

void endStartup(const QByteArray &startupId) {
    auto *server = connection();
    if (!server || startupId.isEmpty())
        return;
    QByteArray message = "remove: ID=";
    for (const char letter : startupId) {
        if (letter == ' ' || letter == '"' || letter == '\\')
            message += '\\';
        message += letter;
    }
    message += '\0';

    // The parts of a message are told from those of another by the window that they come from.
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    xcb_client_message_event_t part{};
    part.response_type = XCB_CLIENT_MESSAGE;
    part.format = 8;
    part.window = xcb_generate_id(server);
    part.type = atom(server, "_NET_STARTUP_INFO_BEGIN");
    xcb_create_window(server, XCB_COPY_FROM_PARENT, part.window, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    for (qsizetype at = 0; at < message.size(); at += sizeof part.data) {
        const QByteArray text = message.mid(at, sizeof part.data).leftJustified(sizeof part.data, '\0');
        std::memcpy(part.data.data8, text.constData(), sizeof part.data);
        xcb_send_event(server, false, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&part));
        part.type = atom(server, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(server, part.window);
    xcb_flush(server);
}

} // namespace quorbit::x11
