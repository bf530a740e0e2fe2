#pragma once

/// The default route (0.0.0.0 mask 0.0.0.0) through the system's "route" command, callable from C. All return 1 for
/// success and -1 for failure; a command that can not start, or does not end within 30 s, is a failure.
extern "C" {
/// Adds it, deletes it, or changes it. Success means that the command printed "OK!". A null gateway is passed on as
/// an empty text.
int routeAddDefaultRoute(const char *gateway);
int routeDelDefaultRoute();
int routeSetDefaultRoute(const char *gateway);

/// Writes the gateway that "route print" shows into the caller's 256 bytes, with a terminating NUL.
int routeGetDefaultRoute(char *gateway);
}

/// The size of the buffer that routeGetDefaultRoute() writes to, at most to its end.
constexpr int kGatewayBufferSize = 256;
