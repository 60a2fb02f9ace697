#pragma once

// How many slices a refinement frame draws to last about a given time. A
// frame costs a fixed part (the kept picture, the read-back, the draw
// call's setup over the whole cloud: about 25-35 ms for 10 million points
// here) plus a part per slice; both are fitted to the frames of the picture
// so far, so the frames after the first few fill their time.
class RefinePace {
public:
    // A new picture: its first frame drew one slice.
    void restart();
    // The last frame drew 'slices' in 'ms'.
    void add(unsigned int slices, double ms);
    // Slices for a frame of about 'ms', at most four times the last.
    unsigned int slicesFor(double ms) const;

private:
    double n_ = 0, sumS_ = 0, sumT_ = 0, sumSS_ = 0, sumST_ = 0;
    unsigned int last_ = 1;
    double lastMs_ = 0;
};
