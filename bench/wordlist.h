// The word lists of the string benchmarks: 20,000 words spread over a Debian
// dictionary (/usr/share/dict, installed by tools/bench-setup.sh), decoded from
// UTF-8 and kept as Latin-1 (code set 1) and as UTF-16 units (code set 253).
#ifndef BENCH_WORDLIST_H
#define BENCH_WORDLIST_H

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

struct WordList {
    std::vector<std::string> latin1;           // zero-terminated by std::string
    std::vector<std::vector<uint16_t>> utf16;  // each closed by a zero unit
    size_t latin1Chars = 0;
    size_t utf16Units = 0;
};

// Decodes one UTF-8 line into code points; false for malformed input.
inline bool DecodeUtf8(const std::string& line, std::vector<uint32_t>& out) {
    out.clear();
    for (size_t i = 0; i < line.size();) {
        const auto b = static_cast<unsigned char>(line[i]);
        int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
        if (extra < 0 || i + static_cast<size_t>(extra) >= line.size() + (extra == 0 ? 1 : 0)) return false;
        uint32_t cp = extra == 0 ? b : (b & (0x3Fu >> extra));
        for (int k = 1; k <= extra; ++k) {
            const auto c = static_cast<unsigned char>(line[i + static_cast<size_t>(k)]);
            if ((c & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (c & 0x3Fu);
        }
        out.push_back(cp);
        i += static_cast<size_t>(extra) + 1;
    }
    return true;
}

// Loads up to `wanted` words spread evenly over the file; empty when it is missing.
inline WordList LoadWordList(const char* path, size_t wanted = 20000) {
    WordList list;
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        if (!line.empty()) lines.push_back(line);
    if (lines.empty()) return list;
    const size_t step = lines.size() > wanted ? lines.size() / wanted : 1;
    std::vector<uint32_t> cps;
    for (size_t i = 0; i < lines.size() && list.utf16.size() < wanted; i += step) {
        if (!DecodeUtf8(lines[i], cps)) continue;
        bool latin = true, bmp = true;
        for (uint32_t cp : cps) {
            latin = latin && cp <= 0xFF;
            bmp = bmp && cp <= 0xFFFF;
        }
        if (!bmp) continue;
        std::vector<uint16_t> units(cps.begin(), cps.end());
        list.utf16Units += units.size();
        units.push_back(0);
        list.utf16.push_back(std::move(units));
        if (latin) {
            list.latin1.emplace_back(cps.begin(), cps.end());
            list.latin1Chars += cps.size();
        }
    }
    return list;
}

#endif
