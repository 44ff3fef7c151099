#pragma once

#include "NZIOHolder.h"

/// A printer at the other end of a stream.
class NZPrinter : public NZIOHolder
{
};
