#pragma once

#include <string>

class QelVar;

namespace qel {

// A wide path as UTF-8 bytes for the file system. Done by hand so that the
// process locale is never touched; invalid code points become U+FFFD.
std::string pathToUtf8(const wchar_t* path);

// The path held by a variant (wide or narrow string); empty otherwise.
std::string pathFromVar(const QelVar& path);

// The lower-case suffix after the last dot of the file name, without the dot.
std::string lowerSuffix(const std::string& path);

}  // namespace qel
