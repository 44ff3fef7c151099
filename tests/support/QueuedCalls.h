#pragma once

/// Shows queued calls to the thread sanitizer: what a thread did before it queues a call, the thread that
/// receives it sees. The toolkit ensures that with a mutex of its own, whose library is not instrumented; the
/// sanitizer learns of it only when the receiver had to be woken up, and reports a race when it was awake.
/// Once, at the program's start; nothing in other builds.
void showQueuedCalls();
