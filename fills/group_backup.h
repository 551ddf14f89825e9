// The one protection of a group file against a failure halfway through a
// rewrite: the last version kept beside it with ".bak" added.
#pragma once

// Removes path.bak and copies the file at path to it. Failures are ignored:
// there may be no file yet.
void GroupBackup(const char* path);
