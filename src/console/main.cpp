#include <cstdlib>

#include "console/tester.h"

int main(int argumentCount, char** arguments) {
    std::exit(console::runTester(argumentCount, arguments));
}
