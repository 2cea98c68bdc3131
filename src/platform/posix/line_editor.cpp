#include "line_editor.h"

#include <histedit.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "completion.h"
#include "platform/keyboard.h"
#include "terminal.h"

namespace platform {

namespace {

constexpr int kHistoryLines = 1000;
constexpr size_t kDefaultColumns = 80;
constexpr const char* kBlanks = " \t";

// Made once and kept until the process ends: to end an editor would set terminal modes once more. It is made in the
// foreground alone, since to make one sets modes too.
struct Editor {
    EditLine* edit = nullptr;
    History* history = nullptr;
    FILE* screen = nullptr;
    locale_t locale = nullptr;
    const char* prompt = "";
    const char* linePrompt = "";  // of lines that are remembered; answers to questions are not
    std::span<const char* const> words;
};

Editor editor;

// The editor works in characters of the operator's locale; the rest of the process stays in the "C" locale.
class OperatorsLocale {
public:
    OperatorsLocale() : former_(uselocale(editor.locale)) {}
    ~OperatorsLocale() { uselocale(former_); }
    OperatorsLocale(const OperatorsLocale&) = delete;
    OperatorsLocale& operator=(const OperatorsLocale&) = delete;

private:
    locale_t former_;
};

// The operator sees the line on the terminal even when the output is redirected into a file.
FILE* openScreen() {
    if (isatty(STDOUT_FILENO) != 0) {
        return stdout;
    }
    const char* name = ttyname(STDIN_FILENO);
    return name == nullptr ? nullptr : std::fopen(name, "we");
}

char* promptText(EditLine*) {
    return const_cast<char*>(editor.prompt);
}

// Whether what follows the escape code is that of a cursor or function key. Otherwise it is the key itself, struck to
// leave scripts, maybe ahead of a line: it must not take the line's first letter with it.
bool beginsSequence() {
    if (!terminalByteWaiting()) {
        return false;
    }
    const int next = readTerminalByte();
    if (next >= 0) {
        returnTerminalBytes(std::string{static_cast<char>(next)});
    }
    return next == '[' || next == 'O';
}

int readCharacter(EditLine* edit, wchar_t* character) {
    std::mbstate_t state{};
    for (;;) {
        const int byte = readTerminalByte();
        if (byte == kTerminalGone) {
            return 0;
        }
        if (byte == kTerminalInterrupted) {
            el_set(edit, EL_REFRESH);
            continue;
        }
        if (byte == kEscapeKey && !beginsSequence()) {
            continue;
        }
        const char narrow = static_cast<char>(byte);
        const size_t used = std::mbrtowc(character, &narrow, 1, &state);
        if (used == 0 || used == 1) {
            return 1;
        }
        if (used == static_cast<size_t>(-1)) {
            state = {};  // not text of this locale: nothing the screen could show
        }
    }
}

size_t screenColumns() {
    winsize size{};
    const bool known = ioctl(STDIN_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : kDefaultColumns;
}

void listCandidates(const std::vector<const char*>& candidates) {
    size_t width = 0;
    for (const char* candidate : candidates) {
        width = std::max(width, std::strlen(candidate) + 2);
    }
    const size_t perRow = std::max<size_t>(1, screenColumns() / width);
    for (size_t i = 0; i < candidates.size(); ++i) {
        const bool lastOfRow = (i + 1) % perRow == 0 || i + 1 == candidates.size();
        std::fprintf(editor.screen, "%s%-*s%s", i == 0 ? "\n" : "", lastOfRow ? 0 : static_cast<int>(width),
                     candidates[i], lastOfRow ? "\n" : "");
    }
}

unsigned char completeFirstWord(EditLine* edit, int) {
    const LineInfo* line = el_line(edit);
    const std::string_view before(line->buffer, static_cast<size_t>(line->cursor - line->buffer));
    const size_t start = before.find_first_not_of(kBlanks);
    if (start != std::string_view::npos && before.find_first_of(kBlanks, start) != std::string_view::npos) {
        return CC_ERROR;
    }
    const std::string typed(start == std::string_view::npos ? std::string_view() : before.substr(start));
    const Completion completion = completeWord(typed, editor.words);
    if (completion.candidates.empty()) {
        return CC_ERROR;
    }
    if (completion.candidates.size() > 1 && completion.text.size() == typed.size()) {
        listCandidates(completion.candidates);
        return CC_REDISPLAY;
    }
    if (!typed.empty()) {
        el_deletestr(edit, static_cast<int>(typed.size()));
    }
    el_insertstr(edit, completion.text.c_str());
    return CC_REFRESH;
}

// Signals stay with the terminal module. The modes that the editor leaves behind are those of single keys, so that
// what is typed between two lines is neither echoed nor gathered into lines.
void configure(EditLine* edit) {
    el_set(edit, EL_SIGNAL, 0);
    el_set(edit, EL_SETTY, "-x", "-icanon", "-echo", nullptr);
    el_set(edit, EL_PROMPT, promptText);
    el_set(edit, EL_GETCFN, readCharacter);
    el_set(edit, EL_EDITOR, "emacs");
    el_set(edit, EL_HIST, history, editor.history);
    el_set(edit, EL_ADDFN, "complete-first-word", "Complete the first word", completeFirstWord);
    el_set(edit, EL_BIND, "^I", "complete-first-word", nullptr);
    for (const char* controlLeft : {"\\e[1;5D", "\\e[1;3D"}) {
        el_set(edit, EL_BIND, controlLeft, "ed-prev-word", nullptr);
    }
    for (const char* controlRight : {"\\e[1;5C", "\\e[1;3C"}) {
        el_set(edit, EL_BIND, controlRight, "em-next-word", nullptr);
    }
}

bool createEditor() {
    if (editor.edit != nullptr) {
        return true;
    }
    editor.screen = editor.screen != nullptr ? editor.screen : openScreen();
    editor.locale = editor.locale != nullptr ? editor.locale : newlocale(LC_CTYPE_MASK, "", nullptr);
    editor.history = editor.history != nullptr ? editor.history : history_init();
    if (editor.screen == nullptr || editor.history == nullptr) {
        return false;
    }
    HistEvent event{};
    history(editor.history, &event, H_SETSIZE, kHistoryLines);
    history(editor.history, &event, H_SETUNIQUE, 1);

    const OperatorsLocale locale;
    editor.edit = el_init("tamtest", stdin, editor.screen, stderr);
    if (editor.edit != nullptr) {
        configure(editor.edit);
    }
    return editor.edit != nullptr;
}

void remember(const std::string& line) {
    if (line.find_first_not_of(" \t\n") != std::string::npos) {
        HistEvent event{};
        history(editor.history, &event, H_ENTER, line.c_str());
    }
}

}  // namespace

bool prepareLineEditor(const char* prompt, std::span<const char* const> words) {
    editor.prompt = prompt;
    editor.linePrompt = prompt;
    editor.words = words;
    return !terminalInForeground() || createEditor();
}

void setLinePrompt(const char* prompt) {
    editor.prompt = prompt;
}

LineEnd editLine(std::string& line) {
    if (!createEditor()) {
        return LineEnd::kGone;
    }
    const OperatorsLocale locale;
    std::fputs("\r", editor.screen);
    std::fflush(editor.screen);
    int length = 0;
    const char* text = el_gets(editor.edit, &length);
    takeKeyModes();
    if (terminalGone()) {
        return LineEnd::kGone;
    }
    if (text == nullptr || length <= 0) {
        std::fputs("\n", editor.screen);
        std::fflush(editor.screen);
        return LineEnd::kEmpty;
    }
    line.assign(text, static_cast<size_t>(length));
    if (editor.prompt == editor.linePrompt) {
        remember(line);
    }
    return LineEnd::kComplete;
}

}  // namespace platform
