#include "UsbIdentity.h"

#include <fstream>

namespace mirvak {

std::string firstLine(const std::filesystem::path& file)
{
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return line;
}

UsbIdentity usbIdentityOf(const std::filesystem::path& deviceFolder)
{
    std::error_code failed;
    std::filesystem::path folder = std::filesystem::canonical(deviceFolder, failed);
    if (failed)
        return {};
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        const std::string vendor = firstLine(folder / "idVendor");
        const std::string product = firstLine(folder / "idProduct");
        if (vendor.size() == 4 && product.size() == 4)
            return {vendor + product, folder};
    }
    return {};
}

} // namespace mirvak
