#pragma once

#include <algorithm>
#include <cstddef>
#include <thread>
#include <vector>

namespace qel {

// Runs f(begin, end) over [0, n) split into one contiguous chunk per core.
// Small ranges run on the calling thread: starting threads costs more than
// the work.
template <typename F>
void parallelFor(std::size_t n, F&& f, std::size_t minChunk = 262144) {
    const std::size_t cores = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t chunks = std::min(cores, std::max<std::size_t>(1, n / minChunk));
    if (chunks <= 1) {
        f(std::size_t(0), n);
        return;
    }
    std::vector<std::thread> workers;
    workers.reserve(chunks - 1);
    const std::size_t step = (n + chunks - 1) / chunks;
    for (std::size_t c = 1; c < chunks; ++c) {
        const std::size_t begin = std::min(n, c * step);
        const std::size_t end = std::min(n, begin + step);
        workers.emplace_back([&f, begin, end] { f(begin, end); });
    }
    f(std::size_t(0), std::min(n, step));
    for (auto& w : workers)
        w.join();
}

}  // namespace qel
