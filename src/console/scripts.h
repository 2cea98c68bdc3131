// The script engine: text files of tester lines read in place of the console, nested up to four deep, with up to ten
// parameters each, once, counted or for ever. Main thread only.
#pragma once

namespace console {

enum class ScriptStart {
    notOpened,  // no such file, nor with ".scr" behind its name
    started,    // the next line comes from it
    tooDeep,    // said so, and the tester quits after this line
};

// Opens a script and makes the rest of the line being run its parameters. It runs once unless told to loop.
ScriptStart startScript(const char* name);

// The next byte of the running script, or EOF. A line end of carriage return and line feed reads as a line feed.
int scriptByte();

// What happens when the running script has been read to its end: repeat it, end it, or leave all scripts.
void endOfScript();

// Closes every script; the console takes over. Prints nothing.
void leaveAllScripts();

// Operations.
void runScript();
void loopScript();
void loopScriptCounted();
void escapeScripts();

}  // namespace console
