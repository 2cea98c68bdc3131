// What an upload of 100 MB into the simulated scanner's flash takes beside one copy of the same bytes: reading the
// file, the block transfer and the scanner's own keeping. The scanner answers without delay; the waits' pause of 10 ms
// remains. The file is in the system's folder for temporary files, or in $TMPDIR.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "hoxi/hoxi.h"
#include "hoxi/hoxi_codes.h"
#include "link/link_state.h"
#include "link/scanner_link.h"
#include "operations/program_upload.h"
#include "simulator/inspection.h"
#include "support/files.h"

namespace {

constexpr size_t kBytes = 100'000'000;

const std::vector<uint8_t>& content() {
    static const std::vector<uint8_t> bytes(kBytes, 0x5A);
    return bytes;
}

void countBytes(benchmark::State& run) {
    run.SetBytesProcessed(static_cast<int64_t>(run.iterations() * kBytes));
}

// The tester speaks on the standard output, where the figures are shown.
class Silence {
public:
    Silence() : output_(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Silence() {
        std::fflush(stdout);
        dup2(output_, STDOUT_FILENO);
        close(output_);
    }

private:
    int output_;
};

void copyTheContent(benchmark::State& run) {
    std::vector<uint8_t> room(kBytes, 1);
    content();
    for (auto _ : run) {
        std::memcpy(room.data(), content().data(), kBytes);
        benchmark::ClobberMemory();
    }
    countBytes(run);
}
BENCHMARK(copyTheContent)->Unit(benchmark::kMillisecond)->UseRealTime();

void uploadTheContent(benchmark::State& run) {
    const support::TemporaryFolder folder;
    const std::string name = folder.file("content.rbf");
    support::writeFile(name, {reinterpret_cast<const char*>(content().data()), kBytes});
    const Silence silence;
    scannerlink::state.quiet = 1;
    for (auto _ : run) {
        const scannerlink::CommandHeader command{hoxi::CMD_RECV_PCIP, scannerlink::takeTag(), 0};
        operations::uploadProgramFile(command, name.c_str());
    }
    if (simulator::flashContents(0, hoxi::CMD_RECV_PCIP) != content())
        run.SkipWithError("not uploaded");
    countBytes(run);
}
BENCHMARK(uploadTheContent)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    const support::TemporaryFolder folder;
    const std::string scenario = folder.file("scenario.toml");
    support::writeFile(scenario, "[[scanner]]\nlatency_ms = 0\nwork_ms = 0\nrecord_ms = 0\n");
    setenv("HOXI_SCENARIO", scenario.c_str(), 1);
    scannerlink::initializeLink();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    HoxiTerminate();
    return 0;
}
