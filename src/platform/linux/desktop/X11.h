#pragma once

#include <QByteArray>
#include <QWindow>

#include <cstdint>

/// What Qt has no function for in an X11 session; in other sessions all of it answers no and does nothing.
namespace quorbit::x11 {

bool isSession();
/// Whether programs may inject keyboard and pointer events.
bool hasXTest();
/// Whether a compositor blends translucent windows.
bool hasCompositor();
/// Whether a tray takes icons in.
bool hasTray();
/// Whether a settings daemon (XSETTINGS) tells programs the resolution that texts are drawn at.
bool hasSettingsDaemon();
/// Whether a native event announces a tray that has just come up.
bool announcesTray(const QByteArray &eventType, const void *message);
/// Asks for a key that is held to come as presses alone, without a release before each; tells whether it
/// will.
bool useDetectableAutoRepeat();
/// Asks the window manager to bring a window to the front on behalf of the user's action at `timestamp`
/// (milliseconds of the server's clock).
void activate(const QWindow &window, std::uint32_t timestamp);
/// Startup notification: tells the desktop that the start with that id (DESKTOP_STARTUP_ID) is over, so that
/// it stops showing one.
void endStartup(const QByteArray &startupId);

} // namespace quorbit::x11
