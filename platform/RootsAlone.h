#pragma once

/// Whether root owns this file and every folder above it, and nobody else may write to any of them. False when one
/// can not be looked at. Callable before the first call into Qt.
bool isRootsAlone(const char *path);
