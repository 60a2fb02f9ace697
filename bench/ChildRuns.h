#pragma once

// Runs of a benchmark in child processes of its own (so that peak resident
// memory belongs to one data set), and the figures of their JSON lines.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "BenchTiming.h"

namespace bench {

// Runs this program with the arguments and returns its last output line.
inline std::string child(const char* self, const std::string& args) {
    const std::string command = std::string(self) + " " + args;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return {};
    std::string last;
    char line[1024];
    while (std::fgets(line, sizeof line, pipe))
        if (line[0] == '{') last = line;
    pclose(pipe);
    if (!last.empty() && last.back() == '\n') last.pop_back();
    return last;
}

inline double field(const std::string& json, const char* name) {
    const size_t at = json.find(std::string("\"") + name + "\": ");
    return at == std::string::npos ? NAN : std::atof(json.c_str() + at + std::strlen(name) + 4);
}

// One path's output lines over its rounds.
struct Rounds {
    std::vector<std::string> lines;
    double median(const char* name) const {
        std::vector<double> values;
        for (const std::string& line : lines)
            values.push_back(field(line, name));
        return bench::median(values);
    }
    std::string medians() const {
        char text[160];
        std::snprintf(text, sizeof text,
                      "{\"first_s\": %.4f, \"frame_s\": %.4f, \"replace_s\": %.4f}",
                      median("first_s"), median("frame_s"), median("replace_s"));
        return text;
    }
};

}  // namespace bench
