#include "shell/Conversions.h"
