#pragma once

/// The beginning of the line in which the network helper tells what goes past OpenVPN's tunnel, in OpenVPN's output:
/// destinations are lists of addresses, "all" or "all but" of them, then "; " and more of them, or "nothing". No
/// line of OpenVPN's own begins like it.
constexpr char kPastTunnel[] = "Not in the tunnel unless locked down: ";
