// The home folder of the system, and what the start tells the environment about it.
#pragma once

namespace zy {

// Finds the home and exports it. A failure is reported and sets errorFlag; homeFolder is then "".
void findHome();

// Exports the version of the system and the place of its manual.
void publishVersion();
void publishManual();

}  // namespace zy
