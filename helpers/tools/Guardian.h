#pragma once

/// Leaves a process behind that outlives this one and watches the program that runs it: when the program ends without
/// having put the default routes back, because it crashed or was killed, the guardian puts them back, so that a
/// machine whose guard is gone has a network again. Until then it takes away each default route that somebody adds
/// while they are away, as a renewed lease does. Does nothing when the parent process is not this bundle's
/// program, or has a guardian already.
void guardDefaultRoutes();
