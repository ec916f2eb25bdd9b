// Internal: the narrow text that every scan reads.
#ifndef SCANTEXT_H
#define SCANTEXT_H

#include <optional>

#include "lmstring.h"

// Scans read a narrow text: a wide one is appended to a new empty string of the
// native code set, which converts it, and that copy is read.
class ScanText {
public:
    explicit ScanText(const LmString& text) {
        if (text.IsWide()) {
            copy.emplace(LM_CODESET_NATIVE, text.GetLanguage());
            *copy += text;
            chars = copy->StrGet();
        } else {
            chars = text.StrGet();
        }
    }
    ScanText(const ScanText&) = delete;
    ScanText& operator=(const ScanText&) = delete;
    const char* Get() const { return chars; }

private:
    std::optional<LmString> copy;
    const char* chars;
};

#endif
