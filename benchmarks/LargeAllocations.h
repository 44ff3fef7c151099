#pragma once

/// Number of allocations of 64 KiB and more that the process has made so far, by whatever call: pixels, not
/// the small objects that hold them.
unsigned long largeAllocations();
