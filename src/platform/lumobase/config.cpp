// LmConfig: the process configuration, 16-bit values by section and key.
#include "lumobase.h"

#include <map>
#include <string>
#include <utility>

struct LmConfig::Entries {
    std::map<std::pair<std::string, std::string>, uint16_t> values;
};

LmConfig::LmConfig() : entries_(new Entries) {}
LmConfig::~LmConfig() { delete entries_; }

int LmConfig::QueryValue(const char* section, const char* key, uint16_t& value) const {
    if (section == nullptr || key == nullptr) return 0;
    const auto it = entries_->values.find({section, key});
    if (it == entries_->values.end()) return 0;
    value = it->second;
    return 1;
}

int LmConfig::SetValue(const char* section, const char* key, uint16_t value) {
    if (section == nullptr || key == nullptr || *section == '\0' || *key == '\0') return 0;
    entries_->values[{section, key}] = value;
    return 1;
}

int LmConfig::RemoveValue(const char* section, const char* key) {
    if (section == nullptr || key == nullptr) return 0;
    return entries_->values.erase({section, key}) != 0 ? 1 : 0;
}

void LmConfig::Clear() { entries_->values.clear(); }

LmConfig* DefaultConfig(int which) {
    // Built on first use, so that a query during another library's static
    // initialisation finds it ready; never destroyed, so a query during exit works.
    static LmConfig* const process = new LmConfig;
    return which == -1 ? process : nullptr;
}
