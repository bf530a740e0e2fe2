#pragma once

/// Moves the process into a network namespace of its own, with nothing but the loopback interface, so that no test
/// sends a packet into the machine's network and every name look-up fails at once. A root process also gets a /run of
/// its own, so that no helper finds or leaves anything there. Call it before any thread is started. Without the right
/// to do so it only prints a note.
void enterOwnNetwork();
