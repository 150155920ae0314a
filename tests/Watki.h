// Threads of a test.
#pragma once

#include <thread>
#include <vector>

namespace testy {

// Runs the action in so many threads at once, with the number of each, and waits for all.
template <class F> void WWatkach(int ile, F dzialanie) {
    std::vector<std::thread> watki;
    for (int w = 0; w < ile; ++w)
        watki.emplace_back([&dzialanie, w] { dzialanie(w); });
    for (std::thread& watek : watki)
        watek.join();
}

} // namespace testy
