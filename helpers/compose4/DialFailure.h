#pragma once

#include <ctime>
#include <string>

/// Why L2TP was not connected, in words, from what the plug-in's programs (pppd, strongSwan's charon, xl2tpd) wrote
/// to the journal; nmcli tells no more than "Unknown reason". With "691" when the user name or the password was
/// refused. Empty when the journal does not tell.
std::string dialFailure(const std::string &journal);

/// What NetworkManager and the programs that it started wrote to systemd's journal since then; empty without a
/// journal.
std::string dialJournal(time_t since);
