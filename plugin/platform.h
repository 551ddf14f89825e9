// The few things the settings need from the operating system.
#pragma once

// Writes the user's settings folder into buffer: the roaming application-data
// folder on Windows, $XDG_CONFIG_HOME or else ~/.config elsewhere. It may or
// may not end in a separator. 0 if it cannot be had or does not fit.
int PlatformUserDataFolder(char* buffer, int size);
// Whether the Shift key is down now. Never, without a keyboard.
bool PlatformShiftHeld();
// Whether the Alt key is down now. Never, without a keyboard.
bool PlatformAltHeld();

// The machine's owner and organisation as the system records them, for the
// headers of the files we write: "Unknown user" when there is no owner, an
// empty organisation when there is none. Both are cut to fit.
void PlatformMachineOwner(char* owner, int ownerSize, char* organisation, int organisationSize);

// The folder separator of this platform's paths.
extern const char kPlatformPathSeparator;

// The machine's owner and organisation as the system records them, for the
// heads of the group files; "Unknown user" when there is no owner, and an
// empty organisation when there is none. Each buffer holds size bytes.
void PlatformMachineOwner(char* owner, char* organisation, int size);
