#pragma once

#include <string>

/// A fresh folder that disappears with everything in it at the end of the scope.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return path_; }
    /// path() + "/" + name
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    /// Writes a text file and returns its path.
    std::string write(const std::string& name, const std::string& text) const;

private:
    std::string path_;
};
