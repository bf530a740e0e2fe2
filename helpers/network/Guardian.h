#pragma once

#include "helpers/network/State.h"

/// The program of this bundle that started this process; number 0 when it was none, as by hand. The helpers stand in
/// the program's folder or in one below.
Process programAbove();

/// Leaves a process behind that outlives this one and runs watchNetwork() for the program.
void startGuardian(const Process &program);

/// Keeps the network as the journal says while the program of this process descriptor lives: undoes what ended
/// tunnels left, and puts back what others change. When the program ends, however it ends, lifts its lock-down, waits
/// for its tunnels' end and undoes them. Returns then, or at once when there is a guardian already. Signals that end
/// a session do not end it. Uses no processor time while nothing changes.
void watchNetwork(int program);
