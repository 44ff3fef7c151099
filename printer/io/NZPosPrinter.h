#pragma once

#include "NZPrinter.h"

/// A printer of receipts.
class NZPosPrinter : public NZPrinter
{
};
