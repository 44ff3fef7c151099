#pragma once

#include <cstdint>
#include <string>
#include <vector>

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
    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& text) const;
    std::string write(const std::string& name, const std::vector<std::uint8_t>& bytes) const
    {
        return write(name, std::string(bytes.begin(), bytes.end()));
    }
    /// The whole file; empty when there is none.
    std::string content(const std::string& name) const { return contentOf(file(name)); }
    static std::string contentOf(const std::string& path);
    /// What lies in the folder, hidden things too, in order.
    std::vector<std::string> names() const;

private:
    std::string path_;
};
