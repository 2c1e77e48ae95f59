/* Compiled as C11 with all warnings: the public header stands alone. */
#include "mmslib.h"
