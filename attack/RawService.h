#pragma once

/// Answers every HTTP request on 127.0.0.1 with bytes of the test's own choice, from a process of its own: the file
/// "answer" in the working folder, then, when there is a file "more", that one over and over until the other side
/// closes. A path that ends in the content of the file "only" gets that; all others are reset. Returns the process's
/// id; it ends with this one.
int startRawService(unsigned short port);
