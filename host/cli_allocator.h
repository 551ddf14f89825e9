// How the command line's process keeps the memory it frees.
#pragma once

// A render frees and allocates frame-sized blocks over and over; keeping
// them in the process, rather than handing each back to the system and
// faulting fresh pages in for the next, saves a good part of a short
// render's system time. Called once at start.
void CliKeepFreedMemory();
