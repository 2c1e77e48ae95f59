// mmslib beside its floor and beside other libraries, with the same content on every side.
//
// Each round measures all sides of a workload one right after the other; a ratio is the median of
// the ratios of the rounds, so that a machine that is slow for a while does not count.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "mms_side.hpp"
#include "sides.hpp"
#include "workloads.hpp"

namespace bench {

std::vector<SideEntry> &other_sides() {
    static std::vector<SideEntry> sides;
    return sides;
}

namespace {

constexpr double seconds_for_each = 0.02;
constexpr const char *median_counter = "median";

double median(std::vector<double> values) {
    if (values.empty()) {
        return std::nan("");
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// --- what is measured ----------------------------------------------------------------------------

// One workload on all sides.
struct Subject {
    explicit Subject(const Workload &workload)
        : name(workload.name), library(workload.content), floor(library) {
        check("mmslib", library, workload.content);
        for (const SideEntry &entry : other_sides()) {
            others.emplace_back(entry.name, entry.make(workload.content));
            check(entry.name, *others.back().second, workload.content);
        }
    }

    std::string name;
    MmsSide library;
    Floor floor;
    std::vector<std::pair<std::string, std::unique_ptr<Side>>> others;

private:
    void check(const std::string &side, const Side &made, const Content &content) const {
        if (made.content() != content) {
            std::fprintf(stderr, "%s: %s does not hold the content\n", name.c_str(), side.c_str());
            std::exit(EXIT_FAILURE);
        }
    }
};

using Subjects = std::vector<std::unique_ptr<Subject>>;

void add_run(const std::string &name, const std::function<void(benchmark::State &)> &run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->MinTime(seconds_for_each);
}

template <typename Action>
void add(const std::string &name, Action action) {
    add_run(name, [=](benchmark::State &state) {
        while (state.KeepRunning()) {
            action();
        }
    });
}

void add_side(const std::string &workload, const std::string &name, const Side &side) {
    add(workload + "/decode/" + name, [&side] { side.decode(); });
    add(workload + "/encode/" + name, [&side] { side.encode(); });
}

// Without the release: the clock is read before and after each run, and the median of the runs
// counts, because a run that the machine interrupts seems long.
void decode_alone(benchmark::State &state, const MmsSide &library) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times(size_t{1} << 16);
    size_t runs = 0;
    while (state.KeepRunning()) {
        const Clock::time_point start = Clock::now();
        const OwnedMessage message = library.decode_alone();
        const std::chrono::duration<double, std::nano> time = Clock::now() - start;
        times[runs++ % times.size()] = time.count();
    }
    times.resize(std::min(runs, times.size()));
    state.counters[median_counter] = median(std::move(times));
}

void add_subject(const Subject &subject) {
    const MmsSide &library = subject.library;
    add_side(subject.name, "mmslib", library);
    add_side(subject.name, "floor", subject.floor);
    for (const auto &[name, side] : subject.others) {
        add_side(subject.name, name, *side);
    }
    add(subject.name + "/size/mmslib", [&] { benchmark::DoNotOptimize(library.size()); });
    add(subject.name + "/recode/mmslib", [&] { library.recode(); });
    add_run(subject.name + "/decode-alone/mmslib",
            [&](benchmark::State &state) { decode_alone(state, library); });
}

// --- the results ---------------------------------------------------------------------------------

// Keeps the nanoseconds of every round.
class Results : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context & /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            const auto median = run.counters.find(median_counter);
            times_[run.run_name.function_name].push_back(
                median != run.counters.end() ? median->second.value : run.GetAdjustedCPUTime());
        }
    }

    // Whether anything was measured whose name starts so.
    [[nodiscard]] bool hold(const std::string &start) const {
        const auto found = times_.lower_bound(start + "/");
        return found != times_.end() && found->first.starts_with(start + "/");
    }

    [[nodiscard]] double time(const std::string &name) const { return median(rounds(name)); }

    [[nodiscard]] double ratio(const std::string &name, const std::string &other) const {
        std::vector<double> ratios = rounds(name);
        const std::vector<double> others = rounds(other);
        ratios.resize(std::min(ratios.size(), others.size()));
        std::transform(ratios.begin(), ratios.end(), others.begin(), ratios.begin(),
                       std::divides<>());
        return median(ratios);
    }

private:
    [[nodiscard]] std::vector<double> rounds(const std::string &name) const {
        const auto found = times_.find(name);
        return found != times_.end() ? found->second : std::vector<double>();
    }

    std::map<std::string, std::vector<double>> times_;
};

// --- the tables ----------------------------------------------------------------------------------

void print_number(int width, int decimals, double value) {
    if (std::isnan(value)) {
        std::printf(" %*s", width, "-");
    } else {
        std::printf(" %*.*f", width, decimals, value);
    }
}

void print_goal(double value, bool met) {
    print_number(7, 2, value);
    std::printf("%c", std::isnan(value) || met ? ' ' : '!');
}

struct Goals {
    double of_floor;
    double of_protobuf;
    double faster_than_gmime;
};
constexpr Goals decode_goals{1.5, 1, 20};
constexpr Goals encode_goals{HUGE_VAL, 1, 5};
constexpr Goals photo_encode_goals{1.3, 1, 5}; // the one message that is next to all copying

const Goals &goals_of(const std::string &workload, const std::string &operation) {
    if (operation == "decode") {
        return decode_goals;
    }
    return workload == "photo" ? photo_encode_goals : encode_goals;
}

void print_comparison(const Results &results, const Subject &subject,
                      const std::string &operation) {
    const Goals &goals = goals_of(subject.name, operation);
    const std::string start = subject.name + "/" + operation + "/";
    const auto ratio = [&](const char *side) {
        return results.ratio(start + "mmslib", start + side);
    };
    std::printf("%-13s", subject.name.c_str());
    print_number(9, 0, results.time(start + "mmslib"));
    print_number(9, 0, results.time(start + "floor"));
    print_goal(ratio("floor"), ratio("floor") <= goals.of_floor);
    print_number(9, 0, results.time(start + "protobuf"));
    print_goal(ratio("protobuf"), ratio("protobuf") <= goals.of_protobuf);
    print_number(10, 0, results.time(start + "GMime"));
    print_goal(1 / ratio("GMime"), 1 / ratio("GMime") >= goals.faster_than_gmime);
    std::printf("\n");
}

void print_comparisons(const Results &results, const Subjects &subjects,
                       const std::string &operation) {
    std::printf("\n%-13s %9s %9s %7s  %9s %7s  %10s %7s\n", operation.c_str(), "ns", "floor",
                "ratio", "protobuf", "ratio", "GMime", "faster");
    for (const auto &subject : subjects) {
        if (results.hold(subject->name + "/" + operation)) {
            print_comparison(results, *subject, operation);
        }
    }
}

void print_library(const Results &results, const Subjects &subjects) {
    std::printf("\n%-13s %8s %7s %12s  %12s %9s %9s\n", "mmslib", "octets", "blocks", "allocations",
                "decode alone", "size", "recode");
    for (const auto &subject : subjects) {
        if (!results.hold(subject->name)) {
            continue;
        }
        std::printf("%-13s %8zu %7zu %12zu ", subject->name.c_str(), subject->library.pdu().size(),
                    subject->floor.record().sizes.size(), subject->floor.record().allocations);
        print_number(12, 0, results.time(subject->name + "/decode-alone/mmslib"));
        print_number(9, 0, results.time(subject->name + "/size/mmslib"));
        print_number(9, 0, results.time(subject->name + "/recode/mmslib"));
        std::printf("\n");
    }
}

// The argument --rounds=<number>; benchmark's own arguments are left to it.
int rounds_wanted(int argc, char **argv) {
    constexpr std::string_view option = "--rounds=";
    int rounds = 15;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]).starts_with(option)) {
            rounds = std::atoi(argv[i] + option.size()); // NOLINT(cert-err34-c): 0 runs nothing
        }
    }
    return rounds;
}

} // namespace
} // namespace bench

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    bench::Subjects subjects;
    for (const bench::Workload &workload : bench::workloads()) {
        subjects.push_back(std::make_unique<bench::Subject>(workload));
        bench::add_subject(*subjects.back());
    }
    bench::Results results;
    for (int round = bench::rounds_wanted(argc, argv); round > 0; --round) {
        if (benchmark::RunSpecifiedBenchmarks(&results) == 0) {
            return EXIT_SUCCESS; // the filter leaves nothing
        }
    }
    bench::print_comparisons(results, subjects, "decode");
    bench::print_comparisons(results, subjects, "encode");
    bench::print_library(results, subjects);
    return EXIT_SUCCESS;
}
