// Everything the tester says. output() reaches the console and the command log; consolePrint() the console alone
// (prompt, loop banners, text messages of the scanner, questions). Each message is flushed, so that a pipe sees it
// at once and the log is whole when the tester is stopped abruptly. Any thread.
#pragma once

#if defined(__MINGW32__)
#define TAMTEST_PRINTF(text, first) __attribute__((format(gnu_printf, text, first)))
#else
#define TAMTEST_PRINTF(text, first) __attribute__((format(printf, text, first)))
#endif

namespace console {

// As printf. Returns the count of the log write, without a log that of the console write. Log errors are ignored.
int output(const char* format, ...) TAMTEST_PRINTF(1, 2);

// As printf, to the console only.
int consolePrint(const char* format, ...) TAMTEST_PRINTF(1, 2);

// Operations.
void beginLog();
void endLog();
void resetLog();

}  // namespace console
