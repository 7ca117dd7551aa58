#pragma once
// Flags through which the companion programs (real-time FTP, webcam capture,
// network posters, 1-wire readers, the watchdog ...) are told to stop. They
// poll the upload/inter-process store; at exit the program raises the flags,
// and at start it lowers them again so that a flag left from the last exit
// does not stop a companion that is started anew.
//
// Both write the flags and flush the store at once, since other processes
// read it; they return the result of that flush.

#include "core/settings_store.h"

namespace nimbrel {

bool raiseCompanionExitFlags(SettingsStore& interProcessStore);
bool clearCompanionExitFlags(SettingsStore& interProcessStore);

}  // namespace nimbrel
