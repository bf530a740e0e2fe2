#pragma once

/// Brings the application's window to the front of all applications. On macOS it activates the application; on X11 it
/// sends the window manager the EWMH request _NET_ACTIVE_WINDOW for the main window. On any other window system it
/// does nothing.
void macosActiveWindow();
