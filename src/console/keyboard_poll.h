// The keyboard as waits and loops look at it: only while polling is enabled (KBHit_Enable). Main thread only.
#pragma once

#include "platform/keyboard.h"

namespace console {

bool keyStruck();

// Takes the key that keyStruck() announced.
int readStruckKey();

// Takes the key that ends a wait: ESC leaves all scripts, any other key only ends the wait.
void takeWaitKey();

}  // namespace console
