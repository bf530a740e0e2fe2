#pragma once

/// The way out that is left to OpenVPN's own packets while lock-down has removed the default route: tools/route keeps
/// the removed route in a routing table of its own and a policy rule that sends marked packets there; compose marks
/// OpenVPN's socket.
constexpr unsigned kTunnelMark = 0x4b6f;
constexpr unsigned kTunnelTable = 19311;

/// Root-only folder for what the helpers must remember until the machine is as it was: the route journal and the DNS
/// journal. It is on a file system that a restart of the machine empties, just as it empties the routing tables.
constexpr char kJournalFolder[] = "/run/korvan";

/// The route journal's name in that folder. It is there from before the routes are removed until they are back.
constexpr char kRouteJournal[] = "route.journal";
