// What a process that feeds a card asks of the system.
#pragma once

namespace tessara {

/// Runs this thread before all ordinary ones of the machine, and wakes it on time, since every
/// frame leaves from it. A thread or a program that it starts is ordinary. Where the user has no
/// right to real-time threads or to better niceness, all stays as it was. The risk: a real-time
/// thread that never returns holds its core for 95 % of every second, all that Linux grants unless
/// told otherwise, and on a machine of one core the desktop with it.
void raiseThreadPriority();
/// Whether this thread runs before ordinary ones.
bool isThreadPriorityRaised();

/// Runs this thread only when others have nothing to do, or nearly so: for work ahead of its time
/// that holds no lock which others want.
void lowerThreadPriority();
/// Runs this thread as an ordinary one again, where the user has the right to it.
void resetThreadPriority();

/// Keeps freed memory for the next frame: a freshly mapped piece costs more in page faults than
/// many a frame does in drawing. Large pieces are given back: each thread would keep its own. To be
/// called before the first frame.
void keepFreedMemory();

} // namespace tessara
