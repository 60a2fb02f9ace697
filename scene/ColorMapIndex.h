#pragma once

// The colour table used by the default height colouring of every window:
// process-wide, 5 at start; only 0..6 are taken, other values are ignored.
class ColorMapIndex {
public:
    static int current() { return current_; }
    static void set(int lut) {
        if (lut >= 0 && lut <= 6) current_ = lut;
    }

private:
    static inline int current_ = 5;
};
