// What a process that feeds a card asks of the system.
#pragma once

namespace tessara {

/// Runs this thread before ordinary ones and wakes it on time, since every frame leaves from it.
/// Threads that it starts later inherit that. Where the user has no right to it, all stays as it
/// was.
void raiseThreadPriority();

/// Runs this thread only when others have nothing to do, or nearly so: for work ahead of its time
/// that holds no lock which others want.
void lowerThreadPriority();
/// As an ordinary thread, whatever it inherited.
void resetThreadPriority();

/// Keeps freed memory for the next frame: a freshly mapped piece costs more in page faults than
/// many a frame does in drawing. Large pieces are given back: each thread would keep its own. To be
/// called before the first frame.
void keepFreedMemory();

} // namespace tessara
