#include "virtual-card/Instruments.h"
