// The two descriptor tables, the manager services that do work of their own, and
// the module functions.
#include <cstdio>
#include <cstring>
#include <new>

#include "lmslots.h"
#include "lmstring.h"
#include "lmtypemgr.h"
#include "lumoi18n.h"

#ifndef LUMOTYPES_BUILD_TAG
#define LUMOTYPES_BUILD_TAG "lumotypes-14.0.1"
#endif

LmTypeDesc* LmTypeTableCurrent[LmTypeCountCurrent] = {
    &LmDesc_o_char,       &LmDesc_o_2b,          &LmDesc_o_4b,          &LmDesc_o_double,        &LmDesc_o_float,
    &LmDesc_o_u2b,        &LmDesc_o_u4b,         &LmDesc_int,           &LmDesc_unsigned,        &LmDesc_enum,
    &LmDesc_o_u1b,        &LmDesc_LmString,      &LmDesc_LmDate,        &LmDesc_LmTime,          &LmDesc_BlockId,
    &LmDesc_LmObjId,      &LmDesc_LmClassId,     &LmDesc_LmRef,         &LmDesc_LmBlob,          &LmDesc_LmDateTime,
    &LmDesc_LmIString,    &LmDesc_LmCaseIString, &LmDesc_d_Date,        &LmDesc_d_Time,          &LmDesc_d_Timestamp,
    &LmDesc_d_Interval,   &LmDesc_LmInt64,       &LmDesc_LmBoolean,     &LmDesc_LmNull_char,     &LmDesc_LmNull_uchar,
    &LmDesc_LmNull_short, &LmDesc_LmNull_ushort, &LmDesc_LmNull_int,    &LmDesc_LmNull_unsigned, &LmDesc_LmNull_long,
    &LmDesc_LmNull_ulong, &LmDesc_LmNull_float,  &LmDesc_LmNull_double, &LmDesc_LmNull_LmInt64,  &LmDesc_LmSeal,
    &LmDesc_LmDateTimeN,  &LmDesc_LmTimeSpan,    &LmDesc_o_8b,          &LmDesc_o_u8b,           &LmDesc_LmNull_8b,
    &LmDesc_LmNull_u8b,   &LmDesc_illegal,
};

// Levels below 4: the same records but for id 11, which keeps the old string forms.
LmTypeDesc* LmTypeTableLegacy[LmTypeCountLegacy] = {
    &LmDesc_o_char,     &LmDesc_o_2b,           &LmDesc_o_4b,      &LmDesc_o_double, &LmDesc_o_float,
    &LmDesc_o_u2b,      &LmDesc_o_u4b,          &LmDesc_int,       &LmDesc_unsigned, &LmDesc_enum,
    &LmDesc_o_u1b,      &LmDesc_LmStringLegacy, &LmDesc_LmDate,    &LmDesc_LmTime,   &LmDesc_BlockId,
    &LmDesc_LmObjId,    &LmDesc_LmClassId,      &LmDesc_LmRef,     &LmDesc_LmBlob,   &LmDesc_LmDateTime,
    &LmDesc_LmIString,  &LmDesc_LmCaseIString,  &LmDesc_d_Date,    &LmDesc_d_Time,   &LmDesc_d_Timestamp,
    &LmDesc_d_Interval, &LmDesc_LmInt64,        &LmDesc_LmBoolean,
};

// ---- Manager services. ----

unsigned short LmTypeMgr::SupportsCapability(char id, unsigned short capability) const noexcept {
    const int raw = static_cast<signed char>(id);
    switch (capability) {
        case 1:
            return Desc(id)->SetNullValue != nullptr ? 1 : 0;
        case 2:  // the values that can count; BlockId is a number but does not
            switch (raw) {
                case 0:
                case 1:
                case 2:
                case 5:
                case 6:
                case 7:
                case 8:
                case 9:
                case 10:
                case 15:
                case 26:
                case 42:
                case 43:
                    return 1;
                default:
                    return 0;
            }
        case 3:  // the values a time stamp can be written into
            switch (raw) {
                case 12:
                case 13:
                case 19:
                case 22:
                case 23:
                case 24:
                case 40:
                    return 1;
                default:
                    return 0;
            }
        default:
            return 0;
    }
}

void* LmTypeMgr::GetArrayElement(char id, void* base, unsigned index, unsigned count) const noexcept {
    const LmTypeDesc* desc = Desc(id);
    if (desc == nullptr || (count != 0 && index >= count)) return nullptr;
    return static_cast<char*>(base) + static_cast<size_t>(desc->memLen) * index;
}

namespace {
char* CopyOrPoint(const char* text, char* buffer) {
    if (buffer == nullptr) return const_cast<char*>(text);
    std::strcpy(buffer, text);
    return buffer;
}
}  // namespace

char* LmTypeMgr::NameGet(char id, char* buffer) const noexcept { return CopyOrPoint(Desc(id)->name, buffer); }

char* LmTypeMgr::TypeIdNameGet(char id, char* buffer) const noexcept { return CopyOrPoint(Desc(id)->idName, buffer); }

int LmTypeMgr::Name2LmTypeId(const char* name, char& id) const noexcept {
    for (id = 0; id < LmTypeCountCurrent; ++id) {
        // The legacy table ends at 27; the names of the rows after it are the same.
        const int row = static_cast<int>(id);
        const LmTypeDesc* desc =
            (table == LmTypeTableLegacy && row >= LmTypeCountLegacy) ? LmTypeTableCurrent[row] : table[row];
        if (std::strcmp(name, desc->name) == 0) return 0;
    }
    return 1;
}

// The null print string is built at first use, so that it sees the defaults of
// lumoi18n whatever the order of static construction.
namespace {
LmString& NullPrintString() {
    static LmString text("{NULL}");
    return text;
}
}  // namespace

const LmString& LmTypeMgr::GetNullPrintString() { return NullPrintString(); }

void LmTypeMgr::SetNullPrintString(const LmString& text) { NullPrintString() = text; }

// ---- Module functions. ----

namespace {
LmTypeMgr* defaultMgr = nullptr;
int options = 0;
char banner[256];
constexpr unsigned kSerial = 1927;
constexpr const char* kModule = "lumotypes";
constexpr const char* kBuildDate = __DATE__ " " __TIME__;
}  // namespace

void ___LmTypemgrContext(int start) {
    ___LmI18NContext(start);
    if (start != 0) {
        // A second start without a stop replaces the pointer and keeps the old one.
        defaultMgr = new (std::nothrow) LmTypeMgr(5);
    } else {
        delete defaultMgr;
        defaultMgr = nullptr;
    }
}

int& ___LmTypeMgrOptions() { return options; }

LmTypeMgr* DefaultTypeMgr(LmTypeMgr* mgr) {
    if (mgr != nullptr) defaultMgr = mgr;
    return defaultMgr;
}

int LmCheckDll(int flags) { return CheckLmVersionNumber(14, 0, 1, 57, 0, flags | 3); }

const char* LmDescribeDll(unsigned* major, unsigned* minor, unsigned* patch, unsigned* build, unsigned* extra,
                          const char** module, const char** buildDateTime, const char** unknown, unsigned* serial,
                          const char** buildTag, const char** empty) {
    *major = 14;
    *minor = 0;
    *patch = 1;
    *build = 57;
    *extra = 0;
    *module = kModule;
    *buildDateTime = kBuildDate;
    *unknown = "unknown";
    *serial = kSerial;
    *buildTag = LUMOTYPES_BUILD_TAG;
    *empty = "";
    return "Lumo Typemanager";
}

void GetLmTypeMgrInfo(const char** buildTag, unsigned* serial, const char** bannerText, const char** buildDate,
                      const char** module) {
    if (buildTag != nullptr) *buildTag = LUMOTYPES_BUILD_TAG;
    if (serial != nullptr) *serial = kSerial;
    if (bannerText != nullptr) {
        std::snprintf(banner, sizeof banner, "%s %s", "Lumo Typemanager", "14.0.1.57.0 ");
        *bannerText = banner;
    }
    if (buildDate != nullptr) *buildDate = kBuildDate;
    if (module != nullptr) *module = kModule;
}
