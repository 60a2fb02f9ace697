#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "QelVar.h"

// A fresh directory for the files one test writes, removed afterwards.
class TempDir {
public:
    TempDir() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qeltest-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string file(const std::string& name) const { return path_ + "/" + name; }

    // Writes bytes to name and returns its full path.
    std::string write(const std::string& name, const std::string& bytes) const {
        const std::string p = file(name);
        std::ofstream(p, std::ios::binary) << bytes;
        return p;
    }

private:
    std::string path_;
};

// A file path as the wide-string variant the loaders take.
inline QelVar widePath(const std::string& path) {
    std::wstring w(path.begin(), path.end());
    return QelVar(w.c_str());
}
