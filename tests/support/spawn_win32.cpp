#include "support/spawn_win32.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <vector>

namespace support {

namespace {

constexpr int kNotStarted = 127;
// The system ends a process that has crashed with a code of its own, all of which begin with these bits.
constexpr DWORD kEndedBySystem = 0xC0000000;

// Quoted the way in which programs take their command lines apart again.
std::wstring quoted(const std::wstring& word) {
    std::wstring text = L"\"";
    size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"') {
            text.append(backslashes + 1, L'\\');
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, L'\\') + L'"';
}

bool sameName(std::wstring_view left, std::wstring_view right) {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

// The entries "NAME=VALUE" of this process, each ended by a zero, without those of the given names.
std::wstring inheritedEnvironment(const std::vector<std::wstring>& without) {
    std::wstring block;
    wchar_t* const all = GetEnvironmentStringsW();
    for (const wchar_t* entry = all; *entry != L'\0'; entry += std::wstring_view(entry).size() + 1) {
        const std::wstring_view text(entry);
        const std::wstring_view name = text.substr(0, text.find(L'=', 1));
        if (std::ranges::none_of(without, [name](const std::wstring& other) { return sameName(name, other); })) {
            block.append(text).push_back(L'\0');
        }
    }
    FreeEnvironmentStringsW(all);
    return block;
}

std::wstring environmentFor(const RunOptions& options) {
    std::vector<std::wstring> names = {L"HOXI_SCENARIO"};
    std::wstring given;
    for (const auto& [name, value] : options.environment) {
        names.push_back(wide(name));
        given.append(wide(name + "=" + value)).push_back(L'\0');
    }
    return inheritedEnvironment(names) + given;
}

}  // namespace

void Handle::reset(HANDLE handle) {
    if (handle_ != nullptr) {
        CloseHandle(handle_);
    }
    handle_ = handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

void Process::start(const std::string& program, const RunOptions& options, const StandardHandles& handles) {
    const std::wstring path = std::filesystem::absolute(wide(program)).wstring();
    std::wstring line = quoted(path);
    for (const std::string& argument : options.arguments) {
        line += L' ' + quoted(wide(argument));
    }
    std::wstring environment = environmentFor(options);
    const std::wstring folder = wide(options.folder);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = handles.input;
    startup.hStdOutput = handles.output;
    startup.hStdError = handles.error;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                       environment.data(), folder.empty() ? nullptr : folder.c_str(), &startup, &started)) {
        CloseHandle(started.hThread);
        process_.reset(started.hProcess);
    }
}

Process::~Process() {
    kill(0);
}

bool Process::ended() const {
    return !process_.open() || WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0;
}

void Process::kill(int signal) {
    if (!ended()) {
        TerminateProcess(process_.get(), kEndedBySystem | static_cast<DWORD>(signal));
        WaitForSingleObject(process_.get(), INFINITE);
    }
}

DWORD Process::code() const {
    DWORD code = kNotStarted;
    if (process_.open()) {
        GetExitCodeProcess(process_.get(), &code);
    }
    return code;
}

int Process::exitCode() const {
    return !ended() || code() >= kEndedBySystem ? -1 : static_cast<int>(code());
}

int Process::signal() const {
    return ended() && code() >= kEndedBySystem ? static_cast<int>(code() & 0xFFFF) : 0;
}

std::wstring wide(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    std::wstring text(utf8.size(), L'\0');
    text.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), size)));
    return text;
}

std::string narrow(std::wstring_view text) {
    std::string utf8(3 * text.size(), '\0');
    utf8.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                        utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

uint64_t steadyMs() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

}  // namespace support
