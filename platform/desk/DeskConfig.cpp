#include "DeskConfig.h"
