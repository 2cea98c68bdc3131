#include <cstdlib>

#include "console/tester.h"
#include "platform/process.h"

int main(int argumentCount, char** arguments) {
    platform::secureStandardStreams();
    std::exit(platform::exitCode(console::runTester(argumentCount, arguments)));
}
