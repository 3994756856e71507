#include "shell/AppDir.h"
