// Compiled as C++17 with all warnings: the public header stands alone and is usable from C++.
#include "mmslib.h"
