// What the tester's own work costs on the road of a command: running a line, sending a packet, handing over and
// showing a report. Each beside what it cannot do without, so that one run tells the overhead. Library and clock are
// fakes that cost nothing worth mentioning.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <iostream>

#include "console/console_state.h"
#include "console/dispatcher.h"
#include "hoxi/hoxi.h"
#include "link/command_channel.h"
#include "link/link_state.h"
#include "link/report_display.h"
#include "link/scanner_link.h"
#include "link/status_check.h"
#include "support/fake_hoxi.h"
#include "support/fake_platform.h"

namespace {

void prepare() {
    support::resetFakePlatform();
    support::resetFakeHoxi();
    console::resetConsoleState();
    scannerlink::state.newStatusMutex = {};
    scannerlink::resetLinkState();
    scannerlink::initializeLink();
}

scannerlink::Report imageInfo() {
    scannerlink::Report report{};
    report.code = 52;
    report.state = 3;
    return report;
}

// A name that no row has: the look-up walks the whole table, and a script of the name is looked for.
void dispatchLine(benchmark::State& run) {
    prepare();
    char line[32];
    for (auto _ : run) {
        std::strcpy(line, "zzz_no_such_operation");
        console::dispatchLine(line);
    }
}
BENCHMARK(dispatchLine);

void printALine(benchmark::State& run) {
    for (auto _ : run) {
        std::printf("TamTest: Invalid command - %s\n", "zzz_no_such_operation");
        std::fflush(stdout);
    }
}
BENCHMARK(printALine);

void sendCommandQuietly(benchmark::State& run) {
    prepare();
    scannerlink::state.quiet = 1;
    uint32_t packet[] = {0, 0, 0};
    for (auto _ : run) {
        packet[1] = scannerlink::takeTag();
        benchmark::DoNotOptimize(scannerlink::sendCommand(packet, sizeof packet));
        support::fakeHoxi().calls.clear();
    }
}
BENCHMARK(sendCommandQuietly);

void sendCommandWithEcho(benchmark::State& run) {
    prepare();
    uint32_t packet[] = {0, 0, 0};
    for (auto _ : run) {
        packet[1] = scannerlink::takeTag();
        benchmark::DoNotOptimize(scannerlink::sendCommand(packet, sizeof packet));
        support::fakeHoxi().calls.clear();
    }
}
BENCHMARK(sendCommandWithEcho);

void callTheLibrary(benchmark::State& run) {
    prepare();
    const uint32_t packet[] = {0, 1, 0};
    uint32_t word = 0;
    for (auto _ : run) {
        benchmark::DoNotOptimize(HoxiPutCommand(0, packet, sizeof packet, &word));
        support::fakeHoxi().calls.clear();
    }
}
BENCHMARK(callTheLibrary);

void handOverAndDisplay(benchmark::State& run) {
    prepare();
    scannerlink::state.quiet = run.range(0) != 0 ? 0 : 1;
    const scannerlink::Report report = imageInfo();
    scannerlink::Mailbox& mailbox = scannerlink::state.mailboxes[0];
    for (auto _ : run) {
        mailbox.newest = report;
        mailbox.slots[report.code] = report;
        benchmark::DoNotOptimize(scannerlink::checkStatus());
    }
}
BENCHMARK(handOverAndDisplay)->ArgName("shown")->Arg(0)->Arg(1);

void copyAReportTwice(benchmark::State& run) {
    const scannerlink::Report report = imageInfo();
    scannerlink::Report copies[2];
    for (auto _ : run) {
        std::memcpy(&copies[0], &report, sizeof report);
        std::memcpy(&copies[1], &report, sizeof report);
        benchmark::DoNotOptimize(copies);
    }
}
BENCHMARK(copyAReportTwice);

}  // namespace

// Figures go to the file that --benchmark_out names; standard output belongs to the tester's own printing.
int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments))
        return 1;
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_None);
    reporter.SetOutputStream(&std::cerr);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
