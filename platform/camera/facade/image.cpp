#include "Impl.h"
