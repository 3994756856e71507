#include "database/Database.h"
