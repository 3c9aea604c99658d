// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The engine's small parts, each on a name as real stores have it (about 150 bytes), and the orders
// of a million of them.

#include "demo/demo_names.h"
#include "dictation/dictation_record.h"
#include "dictation/field_date.h"
#include "dictation/name_decoding.h"
#include "dictation/search/matching.h"
#include "dictation/search/result_order.h"
#include "platform/text.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace ov::modDictation;

constexpr const char* name = "2$ROH@@3$OEZ@@4$24.12.2026@@5$HOCH@@6$00$02$15@@7$20.11.2026 "
                             "17$05$00@@8$A²²4711@@11$Arztbrief_Entlassung@@14$Dr!!"
                             " Öztürk@@16$Müller@@17$5@@92$²1Chirurgie@@98$D";
constexpr const char* directory = R"(\store\Chirurgie\2026-11\ERL\)";
constexpr ov::platform::DateTime today{2026, 11, 21, 12, 0, 0};

void decodeGeneral(benchmark::State& state) {
    std::string out;
    while (state.KeepRunning()) {
        out.clear();
        appendDecodedFieldText(name, out);
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(decodeGeneral);

void decodeSecondScheme(benchmark::State& state) {
    std::string out;
    while (state.KeepRunning()) {
        out.clear();
        appendDecodedFieldText2("²1Chirurgie²2Ost²9 ²0²4", out);
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(decodeSecondScheme);

void readField(benchmark::State& state) {
    std::string value;
    const auto field = static_cast<std::int32_t>(state.range(0));
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(GetDictationField(field, directory, name, value));
        benchmark::DoNotOptimize(value.data());
    }
}
// The status at the start, the author in the middle, the marker at the end, one that is not
// there, the whole name, the folder, a date serial.
BENCHMARK(readField)->Arg(2)->Arg(14)->Arg(98)->Arg(95)->Arg(-1)->Arg(-2)->Arg(-3);

void readDate(benchmark::State& state) {
    while (state.KeepRunning())
        benchmark::DoNotOptimize(ReadFieldDate("20.11.2026 17$05$00", false));
}
BENCHMARK(readDate);

void checkUtf8(benchmark::State& state) {
    const std::string text(name);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(ov::platform::isValidUtf8(text));
}
BENCHMARK(checkUtf8);

void upperCase(benchmark::State& state, const char* text) {
    std::string out;
    while (state.KeepRunning()) {
        out.clear();
        ov::platform::appendUpperCase(text, out);
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK_CAPTURE(upperCase, ascii, "Dr. Meier-Schmitz");
BENCHMARK_CAPTURE(upperCase, umlauts, "Dr. Öztürk-Müller");
BENCHMARK_CAPTURE(upperCase, decomposed, "Dr. O\u0308ztu\u0308rk-Mu\u0308ller");
BENCHMARK_CAPTURE(upperCase, greek, "γεωργιος παπαδοπουλος");

void match(benchmark::State& state, const std::vector<Criterion>& criteria) {
    PreparedCriteria prepared(criteria, today);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(MatchDictation(directory, name, prepared, true));
}
BENCHMARK_CAPTURE(match, text, {{5, 17, "öztürk", ""}});
BENCHMARK_CAPTURE(match, wholeName, {{26, 17, "entlassung", ""}});
BENCHMARK_CAPTURE(match, date, {{9, 8, "", ""}});
BENCHMARK_CAPTURE(match, time, {{13, 27, "00:01:00", ""}});
BENCHMARK_CAPTURE(match, number, {{10, 28, "37979", ""}});
BENCHMARK_CAPTURE(match, status, {{2, 25, "7", ""}});
BENCHMARK_CAPTURE(match, priority, {{15, 25, "3", ""}});
BENCHMARK_CAPTURE(match, marker, {{3, 32, "", ""}});
BENCHMARK_CAPTURE(match, flag, {{7, 25, "12", ""}});
BENCHMARK_CAPTURE(match, two, {{15, 25, "3", ""}, {5, 17, "öztürk", ""}});

const DictationList& million() {
    static DictationList list;
    ov::demo::DemoNames names(1, today);
    while (list.size() < 1'000'000) {
        const std::int32_t folder = list.size() / 200;
        list.add("\\store\\Ward " + std::to_string(folder * 37 % 5000) + "\\",
                 names.next(static_cast<ov::demo::DemoTrade>(folder % 4)).fileName);
    }
    return list;
}

// Folder, status, author, number, the date's serial, length, subject, the whole name.
void sortMillion(benchmark::State& state) {
    const DictationList& list = million();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(
            sortedOrder(list, static_cast<std::int32_t>(state.range(0)), false).data());
}
BENCHMARK(sortMillion)
    ->Arg(field_id::folder)
    ->Arg(field_id::status)
    ->Arg(field_id::author)
    ->Arg(field_id::number)
    ->Arg(field_id::dictatedSerial)
    ->Arg(field_id::length)
    ->Arg(field_id::subject)
    ->Arg(field_id::name)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

void sortMillionBack(benchmark::State& state) {
    const DictationList& list = million();
    ResultOrders orders;
    orders.sorted(list, field_id::author, false);
    bool descending = false;
    while (state.KeepRunning())
        benchmark::DoNotOptimize(
            orders.sorted(list, field_id::author, descending = !descending).data());
}
BENCHMARK(sortMillionBack)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace

BENCHMARK_MAIN();
