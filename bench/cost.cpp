// What hostile PDUs cost: every attack at the sizes n, 2n, 4n and 8n, with the time and the memory
// per octet of input and how both grow. Linear cost is a growth of 1.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <malloc.h>

#include <benchmark/benchmark.h>

#include "mmslib.h"

namespace {

// Heap use of the library, which the linker sends through the functions below.
int64_t live = 0;
int64_t peak = 0;

void *count(void *block) {
    if (block != nullptr) {
        live += static_cast<int64_t>(malloc_usable_size(block));
        peak = std::max(peak, live);
    }
    return block;
}

void uncount(void *block) {
    live -= block != nullptr ? static_cast<int64_t>(malloc_usable_size(block)) : 0;
}

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t number, size_t size);
void *__real_realloc(void *block, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size) { return count(__real_malloc(size)); }
void *__wrap_calloc(size_t number, size_t size) { return count(__real_calloc(number, size)); }
void *__wrap_realloc(void *block, size_t size) {
    uncount(block);
    return count(__real_realloc(block, size));
}
void __wrap_free(void *block) {
    uncount(block);
    __real_free(block);
}
}

namespace {

using Octets = std::string;

// --- PDUs ----------------------------------------------------------------------------------------

Octets uintvar(size_t value) {
    Octets octets(1, static_cast<char>(value & 0x7F));
    while ((value >>= 7) != 0) {
        octets.insert(octets.begin(), static_cast<char>(0x80 | (value & 0x7F)));
    }
    return octets;
}

Octets repeat(const Octets &piece, size_t times) {
    Octets all;
    for (; times != 0; --times) {
        all += piece;
    }
    return all;
}

Octets named(size_t number) { return "X" + std::to_string(number) + std::string("\0v\0", 3); }

const Octets headers("\x8C\x84\x98T\0\x8D\x92", 7); // an m-retrieve-conf

Octets part(const Octets &entity_headers) {
    return uintvar(entity_headers.size() + 1) + Octets("\0\x83", 2) + entity_headers;
}

Octets multipart(size_t count, const Octets &parts) {
    return headers + "\x84\xA3" + uintvar(count) + parts;
}

Octets one_part(const Octets &entity_headers) { return multipart(1, part(entity_headers)); }

// A content type of text/plain with parameters.
Octets single(const Octets &parameters) {
    return headers + "\x84\x1F" + uintvar(parameters.size() + 1) + "\x83" + parameters;
}

Octets nested(size_t levels) {
    return multipart(1, repeat(Octets("\x01\x00\xA3\x01", 4), levels - 1) + part(""));
}

struct Attack {
    const char *name;
    size_t n;
    Octets (*pdu)(size_t n);
};

constexpr Attack attacks[] = {
    {"nested multiparts", 31, nested},
    {"parts", 124, [](size_t n) { return multipart(n, repeat(part(""), n)); }},
    {"a count of 0xFFFFFFFF parts", 124,
     [](size_t n) { return multipart(UINT32_MAX, repeat(part(""), n)); }},
    {"generic headers, distinct names", 8000,
     [](size_t n) {
         Octets all;
         for (size_t i = 0; i < n; ++i) {
             all += named(i);
         }
         return one_part(all);
     }},
    {"generic headers, one name", 8000, [](size_t n) { return one_part(repeat(named(0), n)); }},
    {"generic headers, two names in turn", 8000,
     [](size_t n) { return one_part(repeat(named(0) + named(1), n / 2)); }},
    {"Content-Location behind generic headers", 8000,
     [](size_t n) {
         Octets all;
         for (size_t i = 0; i < n / 2; ++i) {
             all += named(i);
         }
         return one_part(all + repeat(Octets("\x8El\0", 3), n / 2));
     }},
    {"parameters, well known", 8000,
     [](size_t n) { return single(repeat(Octets("\x81\xEA", 2), n)); }},
    {"parameters, named", 8000, [](size_t n) { return single(repeat(Octets("x\0y\0", 4), n)); }},
    {"parameters, skipped", 8000, [](size_t n) { return single(repeat("\xFF\x81", n)); }},
    {"addresses", 8000, [](size_t n) { return headers + repeat(Octets("\x97+1\0", 4), n); }},
    {"senders", 8000, [](size_t n) { return headers + repeat(Octets("\x89\x04\x80+1\0", 6), n); }},
    {"application headers", 8000,
     [](size_t n) { return headers + repeat(Octets("x\0y\0", 4), n); }},
    {"encoded words in a name", 8000,
     [](size_t n) { return single("\x85" + repeat("=?UTF-8?Q?=41?= ", n) + Octets(1, '\0')); }},
    {"a name that is almost a word", 8000,
     [](size_t n) { return single("\x85=?UTF-8?Q?" + repeat("?=", n) + Octets(1, '\0')); }},
    {"uintvars that promise more", 8000,
     [](size_t n) { return multipart(n, repeat("\x01\x8F\xFF\xFF\xFF\x7F\x83", n)); }},
    {"value lengths that promise more", 8000,
     [](size_t n) {
         return headers + repeat(Octets("\xB0\x01\x00", 3), n) + "\xB0\x1F\x8F\xFF\xFF\xFF\x7F";
     }},
    {"replaced subjects", 8000, [](size_t n) { return headers + repeat(Octets("\x96s\0", 3), n); }},
};

// --- runs ----------------------------------------------------------------------------------------

struct Encoded {
    uint32_t status = 0;
    uint8_t *octets = nullptr;
    uint32_t length = 0;
};

MMSLib_Message *decode(const Octets &pdu) {
    MMSLib_Message *message = nullptr;
    MMSLib_DecodeMessage(reinterpret_cast<const uint8_t *>(pdu.data()),
                         static_cast<uint32_t>(pdu.size()), &message);
    return message;
}

void run_decode(benchmark::State &state, const Octets &pdu) {
    live = 0;
    peak = 0;
    MMSLib_Message_Destroy(decode(pdu));
    state.counters["memory"] = static_cast<double>(peak);
    while (state.KeepRunning()) {
        MMSLib_Message_Destroy(decode(pdu));
    }
}

// The encoder, for what was decoded.
void run_encode(benchmark::State &state, const Octets &pdu) {
    MMSLib_Message *message = decode(pdu);
    while (state.KeepRunning()) {
        Encoded encoded;
        encoded.status = MMSLib_EncodeMessage(message, &encoded.octets, &encoded.length, 0);
        std::free(encoded.octets);
    }
    MMSLib_Message_Destroy(message);
}

// --- the table -----------------------------------------------------------------------------------

// Collects the medians of all runs and prints one line for each attack.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context & /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            if (run.aggregate_name != "median") {
                continue;
            }
            const std::string name = run.run_name.function_name;
            if (lines_.find(name) == lines_.end()) {
                order_.push_back(name);
            }
            Line &line = lines_[name];
            const double octets = run.counters.at("octets");
            line.times.push_back(run.GetAdjustedCPUTime() / octets);
            const auto memory = run.counters.find("memory");
            line.memory.push_back(memory != run.counters.end() ? memory->second / octets : 0);
            line.octets = octets;
        }
    }

    void Finalize() override {
        std::printf("%-50s %10s  %31s %7s  %7s\n", "attack", "octets(8n)",
                    "ns per octet at n, 2n, 4n, 8n", "growth", "memory");
        for (const std::string &name : order_) {
            const Line &line = lines_[name];
            std::printf("%-50s %10.0f ", name.c_str(), line.octets);
            for (const double time : line.times) {
                std::printf(" %7.2f", time);
            }
            std::printf(" %7.2f", line.times.back() / line.times.front());
            const double memory = *std::max_element(line.memory.begin(), line.memory.end());
            if (memory != 0) {
                std::printf("  %7.1f", memory);
            }
            std::printf("\n");
        }
    }

private:
    struct Line {
        std::vector<double> times;
        std::vector<double> memory;
        double octets = 0;
    };
    std::map<std::string, Line> lines_;
    std::vector<std::string> order_;
};

void add(const Attack &attack, const char *what,
         void (*run)(benchmark::State &state, const Octets &pdu)) {
    for (size_t times = 1; times <= 8; times *= 2) {
        const Octets pdu = attack.pdu(attack.n * times);
        const auto once = [=](benchmark::State &state) {
            run(state, pdu);
            state.counters["octets"] = static_cast<double>(pdu.size());
        };
        benchmark::RegisterBenchmark((std::string(what) + attack.name).c_str(), once)
            ->Unit(benchmark::kNanosecond)
            ->Repetitions(5)
            ->MinTime(0.02);
    }
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    for (const Attack &attack : attacks) {
        add(attack, "decode ", run_decode);
        add(attack, "encode ", run_encode);
    }
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
