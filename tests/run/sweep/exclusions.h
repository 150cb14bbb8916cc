// Functions that the sweep does not call with anything, or not with everything, and why.
//
// To be included behind import.hpp.
#pragma once

struct Exclusion {
    const char* name;
    const char* reason;
};

// Functions whose work, done as told, would end the sweep or leave it waiting for somebody.
static const Exclusion neverCalled[] = {
    {"exit", "ends the program"},
    {"fail", "throws on purpose"},
    {"closeWindow", "shuts the window of the sweep"},
    {"messageBox", "waits for an answer"},
    {"messageBoxOk", "waits for an answer"},
    {"messageBoxOkCancel", "waits for an answer"},
    {"messageBoxYesNo", "waits for an answer"},
    {"messageBoxInfo", "waits for an answer"},
    {"messageBoxWarning", "waits for an answer"},
    {"messageBoxError", "waits for an answer"},
    {"messageBoxRetryCancel", "waits for an answer"},
    {"messageBoxAbortRetryIgnore", "waits for an answer"},
    {"openFileDialog", "waits for a choice"},
    {"openFilesDialog", "waits for a choice"},
    {"saveFileDialog", "waits for a choice"},
    {"chooseFolder", "waits for a choice"},
    {"chooseColor", "waits for a choice"},
    {"chooseFont", "waits for a choice"},
    {"inputBox", "waits for an answer"},
    {"listBoxDialog", "waits for a choice"},
    {"popupMenu", "waits for a choice"},
    {"shellExecute", "opens whatever program the shell offers"},
    {"openUrl", "opens a browser"},
    {"runProgram", "starts programs"},
    {"runCapture", "starts programs"},
    {"startProgram", "starts programs"},
    {"sleepMs", "sleeps as long as it is told"},
    {"waitMs", "waits as long as it is told"},
    {"saveSetting", "fills the registry of the account"},
    {"registryWrite", "fills the registry of the account"},
    {"setAutoStart", "changes what starts with the account"},
    {"consoleOpen", "opens a window that the next functions write to"},
};

// A message may carry an address in a number: what a living control does with one is the caller's.
static const Exclusion notOnControls[] = {
    {"sendMessage", "the receiver follows numbers as addresses"},
};

// Slow on purpose, against guessing: the short sweep gives these each value once.
static const Exclusion calledLess[] = {
    {"hashPassword", "derives a key from the password"},
    {"checkPassword", "derives a key from the password"},
    {"encryptText", "derives a key from the password"},
    {"decryptText", "derives a key from the password"},
    {"encryptFile", "derives a key from the password"},
    {"decryptFile", "derives a key from the password"},
};

template <size_t size>
bool isListed(const Exclusion (&list)[size], const std::string& name) {
    for (const Exclusion& one : list)
        if (name == one.name) return true;
    return false;
}
