#include "tests/fuzz/random_user.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace trovel {
namespace {

/// Lives are short, so that a failure is near its cause and many characters get their turn.
constexpr std::int64_t kEventsPerLife = 2000;
/// Every so many lives one is lived twice, and both must come to the same end.
constexpr std::int64_t kLivesToOneRepeated = 20;

int fuzz(std::uint64_t seed, std::int64_t events) {
    std::printf("seed %llu, %lld events\n", static_cast<unsigned long long>(seed),
                static_cast<long long>(events));
    std::uint64_t digest = 0;
    std::int64_t deliveries = 0;
    double virtualHours = 0;
    for (std::int64_t life = 0; life * kEventsPerLife < events; ++life) {
        auto const lifeSeed = seed + static_cast<std::uint64_t>(life);
        auto const share = std::min(kEventsPerLife, events - life * kEventsPerLife);
        auto report = RandomUser(lifeSeed, static_cast<int>(share)).live();
        if (!report.failure && life % kLivesToOneRepeated == 0 &&
            RandomUser(lifeSeed, static_cast<int>(share)).live().digest != report.digest) {
            report.failure = "two runs of one seed came to different ends";
        }
        if (report.failure) {
            std::printf("%s\nAgain with: trovel_fuzz %llu %lld\n", report.failure->c_str(),
                        static_cast<unsigned long long>(lifeSeed), static_cast<long long>(share));
            return EXIT_FAILURE;
        }
        digest = digest * 31 + report.digest;
        deliveries += report.deliveries;
        virtualHours += std::chrono::duration<double, std::ratio<3600>>(report.virtualTime).count();
    }
    std::printf("%.0f hours of virtual time, %lld deliveries, digest %016llx\n", virtualHours,
                static_cast<long long>(deliveries), static_cast<unsigned long long>(digest));
    return EXIT_SUCCESS;
}

} // namespace
} // namespace trovel

/// trovel_fuzz SEED EVENTS: a random user drives the program through that many events.
int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: trovel_fuzz SEED EVENTS\n");
        return EXIT_FAILURE;
    }
    return trovel::fuzz(std::strtoull(arguments[1], nullptr, 10),
                        std::strtoll(arguments[2], nullptr, 10));
}
