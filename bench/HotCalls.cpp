// What users wait for, a number of times and nothing else, so that the instructions of one can be counted.
// Usage: brennoval-hot-calls CALL TIMES
//        brennoval-hot-calls --prepare: makes the caller's user data as they are after the first start

#include "bench/BenchData.h"
#include "sizing/CatalogueSearch.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::pair<std::string_view, void (*)(int)> calls[] = {
    {"search", [](int) { findModels("RCB", 200, 100); }},
    {"shock-search", [](int) { findShockModels("SHK", 4000, 10); }}, // which no model answers
    {"save", saveNewLine}};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const std::string_view name = argc > 1 ? argv[1] : "";
    if (name == "--prepare") {
        Gateway::execute("User", "UPDATE tblFirstTime SET FirstTime = 1");
        return 0;
    }
    const auto* call = std::ranges::find(calls, name, [](const auto& row) { return row.first; });
    if (argc != 3 || call == std::end(calls)) {
        std::fputs("usage: brennoval-hot-calls search|shock-search|save TIMES, or --prepare\n", stderr);
        return 2;
    }
    const Data data(200, 1000);
    for (int number = 0; number < QString(argv[2]).toInt(); ++number)
        call->second(number);
    return 0;
}
