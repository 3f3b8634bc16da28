// How steadily this machine copies frames when it has nothing else to do. Threads that run before
// ordinary ones each copy a frame at every beat.
#include "Base/ProcessTuning.h"
#include "Base/Seconds.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace tessara;
using SteadyClock = std::chrono::steady_clock;

constexpr double lateness = 4; // ms

struct Beats
{
    SteadyClock::time_point start;
    Seconds interval;
    int count;
};

/// The time of each copy, in ms.
std::vector<double> copyAtEveryBeat(const Beats &beats, std::size_t bytes)
{
    raiseThreadPriority();
    const auto source = std::make_unique<unsigned char[]>(bytes);
    const auto target = std::make_unique<unsigned char[]>(bytes);
    std::memset(source.get(), 1, bytes);
    std::memset(target.get(), 2, bytes);
    std::vector<double> times;
    for (int beat = 0; beat < beats.count; ++beat) {
        std::this_thread::sleep_until(beats.start + toNanoseconds(beats.interval * beat));
        const auto begun = SteadyClock::now();
        std::memcpy(target.get(), source.get(), bytes);
        times.push_back(Seconds(SteadyClock::now() - begun).count() * 1000);
    }
    return times;
}

void report(std::vector<double> times)
{
    std::ranges::sort(times);
    const auto share = [&](double part) {
        return times[std::size_t(part * double(times.size() - 1))];
    };
    const auto late = times.end() - std::ranges::upper_bound(times, share(0.5) + lateness);
    std::printf(
        "p50 %.2f ms, p99 %.2f ms, p99.9 %.2f ms, max %.2f ms, more than 4 ms above p50 %.3f %%\n",
        share(0.5), share(0.99), share(0.999), times.back(),
        double(late) / double(times.size()) * 100);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: %s BYTES THREADS FRAMES_A_SECOND SECONDS\n", argv[0]);
        return EXIT_FAILURE;
    }
    const auto bytes = std::size_t(std::atoll(argv[1]));
    const int threads = std::atoi(argv[2]);
    const double rate = std::atof(argv[3]);
    const Beats beats{SteadyClock::now() + std::chrono::milliseconds(500), Seconds{1 / rate},
                      int(rate * std::atof(argv[4]))};
    if (bytes < 1 || threads < 1 || beats.count < 1) {
        std::fprintf(stderr, "nothing to copy\n");
        return EXIT_FAILURE;
    }
    std::vector<std::vector<double>> times{std::size_t(threads)};
    std::vector<std::thread> copiers;
    for (std::vector<double> &each : times)
        copiers.emplace_back([&] { each = copyAtEveryBeat(beats, bytes); });
    for (std::thread &copier : copiers)
        copier.join();
    // A beat is as late as the last of its copies.
    std::vector<double> slowest = times.front();
    for (const std::vector<double> &each : times)
        std::ranges::transform(slowest, each, slowest.begin(),
                               [](double one, double other) { return std::max(one, other); });
    report(slowest);
}
