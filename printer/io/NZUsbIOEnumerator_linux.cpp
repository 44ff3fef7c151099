#include "NZUsbIOEnumerator_linux.h"

#include "NZDirectoryList_linux.h"

int NZUsbIOEnumerator_linux::Enumerate(char* buf, std::size_t size, std::size_t* total)
{
    static constexpr const char* prefixes[] = {"lp", nullptr};
    return NZDirectoryList_linux::ListFiles(directory_.c_str(), prefixes, buf, size, total);
}
