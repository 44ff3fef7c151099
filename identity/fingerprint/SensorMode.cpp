#include "SensorMode.h"

#include "AtomicFile.h"

#include <QCoreApplication>

#include <libconfig.h++>

#include <cstdio>
#include <unistd.h>

namespace {

constexpr const char* key = "fpmode";
constexpr int noMode = -1;

} // namespace

QString SensorMode::usualFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/plugin.cfg");
}

int SensorMode::read() const
{
    libconfig::Config config;
    try {
        config.readFile(file_.c_str());
    } catch (const libconfig::FileIOException&) {
        std::fputs("I/O error while reading file.\n", stderr);
    } catch (const libconfig::ParseException& wrong) {
        std::fprintf(stderr, "Parse error at %s:%d - %s\n", file_.c_str(), wrong.getLine(), wrong.getError());
    }
    int mode = noMode;
    if (!config.lookupValue(key, mode))
        std::fputs("No 'fpmode' setting in configuration file.\n", stderr);
    std::printf("success fptype:%d\n", mode);
    return mode >= 1 && mode <= 3 ? mode : 1;
}

bool SensorMode::toggle() const
{
    try {
        libconfig::Config config;
        config.readFile(file_.c_str());
        libconfig::Setting& setting = config.lookup(key);
        const int mode = setting;
        if (mode != 1 && mode != 2)
            return false;
        setting = 3 - mode;
        if (access(file_.c_str(), W_OK) != 0) // it would be replaced all the same
            return false;
        mirvak::AtomicFile file(file_, mirvak::IfTaken::replace);
        if (file.failed())
            return false;
        config.writeFile(file.temporary().c_str());
        return file.commit() == mirvak::AtomicFile::Commit::done;
    } catch (const libconfig::ConfigException&) {
        return false;
    }
}
