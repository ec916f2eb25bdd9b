// LmStringIterator: the walk over a text in any code set, the step rule with its
// overflow entries, the collation order of the next character, and the character
// transform behind ToLower and ToUpper. Also the process-wide wildcard orders.
#include <cstring>

#include "lmchar.h"

namespace {

// The asterisk, question and escape orders; 0 until set or first read.
uint16_t wildcardOrders[3] = {0, 0, 0};
constexpr char wildcardChars[3] = {'*', '?', '\\'};

inline unsigned char ResolveLanguage(unsigned char language) {
    return language == LM_LANGUAGE_DEFAULT ? LmLanguageContext::GetDefaultLanguage() : language;
}

}  // namespace

uint16_t LmWildcardOrderGet(int which) {
    if (which < 0 || which > 2) return 0;
    if (wildcardOrders[which] == 0) {
        const LmCodeSet* set = LmLanguageContext::QueryCodeSet(1);
        const LmCollationTable* table = set != nullptr ? set->collation : nullptr;
        const LmCollationRecord* record =
            table != nullptr ? table->lookup(static_cast<unsigned char>(wildcardChars[which])) : nullptr;
        if (record != nullptr) wildcardOrders[which] = record->order;
    }
    return wildcardOrders[which];
}

void LmWildcardOrderSet(int which, uint16_t order) {
    if (which >= 0 && which <= 2) wildcardOrders[which] = order;
}

// ---- Construction. ----

void LmStringIterator::Setup(const void* p, unsigned char textCodeSet, unsigned char textLanguage,
                             unsigned char textFormat) {
    codeSet = textCodeSet;
    language = textLanguage;
    format = textFormat;
    position = static_cast<unsigned char*>(const_cast<void*>(p));
    overflow = nullptr;
    overflowIndex = 0;
    overflowCodeSet = textCodeSet;
    owned = 0;
    buffer = nullptr;
    // The code set object, its table and its family are fixed data of lumoi18n: looked
    // up here once rather than per character. An order text has no code set object:
    // its language byte is its family. A code set unknown to lumoi18n starts in family 0.
    codeSetObject = LmLanguageContext::QueryCodeSet(textCodeSet);
    table = nullptr;
    textFamily = 0;
    if (codeSetObject != nullptr) {
        textFamily = codeSetObject->family(language);
        family = textFamily;
        table = codeSetObject->collation;
    } else {
        family = textCodeSet == LM_CODESET_ORDER ? language : 0;
    }
    // A code set without table orders through code set 253's (an order text through none).
    mapped = table == nullptr ? 1 : 0;
    if (mapped != 0 && textCodeSet != LM_CODESET_ORDER) {
        const LmCodeSet* unicode = LmLanguageContext::QueryCodeSet(LM_CODESET_UNICODE);
        table = unicode != nullptr ? unicode->collation : nullptr;
    }
    // Only a record whose variant word holds this bit can have a variant for the language.
    languageBit = LmLanguageBit(language);
}

LmStringIterator::LmStringIterator() { Setup(nullptr, LM_CODESET_NATIVE, 0, LmFormatLittle); }

LmStringIterator::LmStringIterator(LmString& s) {
    Setup(s.StrGet(), s.GetCodeSet(), ResolveLanguage(s.GetLanguage()), LmFormatMemory);
}

LmStringIterator::LmStringIterator(const char* p, unsigned char cs, unsigned char lang, unsigned char fmt) {
    Setup(p, cs == LM_CODESET_DEFAULT ? LmLanguageContext::GetDefault8CodeSet() : cs, ResolveLanguage(lang),
          fmt == 255 ? LmFormatLittle : fmt);
}

LmStringIterator::LmStringIterator(const unsigned short* p, unsigned char cs, unsigned char lang, unsigned char fmt) {
    Setup(p, cs == LM_CODESET_DEFAULT ? LmLanguageContext::GetDefault16CodeSet() : cs, ResolveLanguage(lang),
          fmt == 255 ? LmFormatLittle : fmt);
}

LmStringIterator::LmStringIterator(LmChar& c) {
    const unsigned width = LmCodeSetWidth(c.GetCodeSet());
    auto* own = new unsigned char[2 * width]();
    const uint16_t v = c.GetValue();
    if (width == 1) {
        own[0] = static_cast<unsigned char>(v);
    } else {
        std::memcpy(own, &v, 2);
    }
    Setup(own, c.GetCodeSet(), ResolveLanguage(c.GetLanguage()), LmFormatLittle);
    buffer = own;
    owned = 1;
}

LmStringIterator::LmStringIterator(const LmStringIterator& other)
    : codeSetObject(other.codeSetObject),
      codeSet(other.codeSet),
      language(other.language),
      family(other.family),
      overflowCodeSet(other.overflowCodeSet),
      overflowIndex(other.overflowIndex),
      format(other.format),
      owned(0),
      position(other.position),
      overflow(other.overflow),
      buffer(nullptr),
      table(other.table),
      languageBit(other.languageBit),
      textFamily(other.textFamily),
      mapped(other.mapped) {}

LmStringIterator& LmStringIterator::operator=(const LmStringIterator& other) {
    if (&other == this) return *this;
    if (owned != 0) delete[] buffer;
    codeSetObject = other.codeSetObject;
    codeSet = other.codeSet;
    language = other.language;
    family = other.family;
    overflowCodeSet = other.overflowCodeSet;
    overflowIndex = other.overflowIndex;
    format = other.format;
    owned = 0;
    position = other.position;
    overflow = other.overflow;
    buffer = nullptr;
    table = other.table;
    languageBit = other.languageBit;
    textFamily = other.textFamily;
    mapped = other.mapped;
    return *this;
}

// ---- Walking. ----

uint16_t LmStringIterator::UnitAt() const {
    if (position == nullptr) return 0;
    if (codeSet < LM_CODESET_FIRST_WIDE) return *position;
    uint16_t unit;
    std::memcpy(&unit, position, 2);
    return unit;
}

// The step rule: while overflow entries remain the position stays; an exhausted
// list is dropped and the position moves on by one character.
void LmStringIterator::Forward() {
    if (overflow != nullptr) {
        if (overflowIndex < overflow->count) return;
        overflow = nullptr;
        overflowIndex = 0;
    }
    if (position != nullptr) position += LmCodeSetWidth(codeSet);
}

void LmStringIterator::Back() {
    if (position != nullptr) position -= LmCodeSetWidth(codeSet);
}

LmChar LmStringIterator::operator*() {
    if (OverflowActive()) {
        uint16_t entry = 0;
        overflow->GetAt(overflowIndex, entry);
        ++overflowIndex;
        return LmChar(static_cast<unsigned short>(entry), overflowCodeSet, language);
    }
    return LmChar(reinterpret_cast<const char*>(position), codeSet, language, format);
}

LmStringIterator& LmStringIterator::operator++() {
    Forward();
    return *this;
}

LmStringIterator LmStringIterator::operator++(int) {
    LmStringIterator before(*this);
    Forward();
    return before;
}

LmStringIterator& LmStringIterator::operator--() {
    Back();
    return *this;
}

void LmStringIterator::Step(int forward) {
    if (forward != 0) {
        Forward();
    } else {
        Back();
    }
}

int LmStringIterator::IsEOS() const {
    if (position != nullptr && UnitAt() != 0) return 0;
    return overflow == nullptr ? 1 : 0;
}

void LmStringIterator::SetOverflow(const LmWCharList* list, unsigned char listCodeSet) {
    overflow = list;
    overflowIndex = 0;
    overflowCodeSet = listCodeSet == LM_CODESET_DEFAULT ? codeSet : listCodeSet;
}

// ---- Collation order. ----

namespace {

// The wildcard order without the call once it is known.
inline uint16_t WildcardOrder(int which) {
    const uint16_t order = wildcardOrders[which];
    return order != 0 ? order : LmWildcardOrderGet(which);
}

// The record of a language with tailored collation, when the record has one for it.
inline const LmCollationRecord* LanguageVariant(const LmCollationRecord* record, const LmLanguage* lang) {
    for (int i = 0; i < record->languages.count; ++i) {
        const LmLanguage* entry = nullptr;
        if (record->languages.GetAt(i, entry) == 0 && entry == lang) {
            const LmCollationRecord* variant = nullptr;
            if (record->languageRecords.GetAt(i, variant) == 0 && variant != nullptr) return variant;
            break;
        }
    }
    return record;
}

}  // namespace

// The common case first: a character of the text itself (no overflow) in a code set
// with a table of its own, whose record needs neither contraction nor expansion. It
// reads the unit, takes the record, and answers its order word.
uint16_t LmStringIterator::GetNextOrder(int mode) {
    if (overflow != nullptr || mapped != 0 || table == nullptr || position == nullptr) return NextOrderSlow(mode);
    uint16_t value = *position;
    if (codeSet >= LM_CODESET_FIRST_WIDE) {
        std::memcpy(&value, position, 2);
        if ((format & 15) == LmFormatBig) value = static_cast<uint16_t>(value >> 8 | value << 8);
    }
    if (value == 0) return 0;
    // Everything beyond a plain record of the dense low range is left to calls in tail
    // position, so that this path needs no registers saved.
    if (value >= table->lowLimit) return OrderAboveLow(value, mode);
    const LmCollationRecord* record = &table->low[value];
    if ((record->hasLanguageVariants & languageBit) != 0 || (record->hasContraction | record->hasExpansion) != 0)
        return FinishOrder(record, codeSetObject, false, mode);
    if (mode != 0) family = record->familySource != nullptr ? *record->familySource : textFamily;
    position += LmCodeSetWidth(codeSet);
    return record->order;
}

uint16_t LmStringIterator::NextOrderSlow(int mode) {
    // An order text holds its words already, low byte first whatever the format.
    if (codeSet == LM_CODESET_ORDER) {
        if (position == nullptr) return 0;
        const auto word = static_cast<uint16_t>(position[0] | position[1] << 8);
        Forward();
        return word;
    }

    uint16_t value = LmChar(reinterpret_cast<const char*>(position), codeSet, language, format).GetValue();
    unsigned char charCodeSet = codeSet;
    const LmCodeSet* set = codeSetObject;
    const LmCollationTable* charTable = table;
    bool mappedChar = mapped != 0;
    if (OverflowActive()) {
        uint16_t entry = 0;
        overflow->GetAt(overflowIndex, entry);
        ++overflowIndex;
        if (overflowCodeSet == LM_CODESET_ORDER) {  // a further word of an expansion
            Forward();
            return entry;
        }
        value = LmChar(static_cast<unsigned short>(entry), overflowCodeSet, language).GetValue();
        charCodeSet = overflowCodeSet;
        set = LmLanguageContext::QueryCodeSet(overflowCodeSet);
        charTable = set != nullptr ? set->collation : nullptr;
        mappedChar = charTable == nullptr;
        if (mappedChar) {
            const LmCodeSet* unicode = LmLanguageContext::QueryCodeSet(LM_CODESET_UNICODE);
            charTable = unicode != nullptr ? unicode->collation : nullptr;
        }
    }

    // A code set without table orders through Unicode. A terminator ends the text
    // before the mapping: a code set unknown to lumoi18n would map it to the substitute.
    if (mappedChar) {
        if (value == 0) return 0;
        value = LmChar(static_cast<unsigned short>(value), charCodeSet, language).MapTo(LM_CODESET_UNICODE).GetValue();
    }

    if (value == 0) return 0;

    const LmCollationRecord* record = charTable != nullptr ? charTable->Find(value) : nullptr;
    if (record == nullptr) return OrderWithoutRecord(value, mode);
    return FinishOrder(record, set, mappedChar, mode);
}

// A value of the text beyond the low records: a record of the runs, or none.
uint16_t LmStringIterator::OrderAboveLow(uint16_t value, int mode) {
    const LmCollationRecord* record = table->lookup(value);
    if (record == nullptr) return OrderWithoutRecord(value, mode);
    return FinishOrder(record, codeSetObject, false, mode);
}

// No collation data: the character's code is its order (the Han path).
uint16_t LmStringIterator::OrderWithoutRecord(uint16_t value, int mode) {
    Forward();
    if (mode != 0 && value != WildcardOrder(LM_WILDCARD_ASTERISK) && value != WildcardOrder(LM_WILDCARD_QUESTION) &&
        value < 0xFFF0) {
        family = LM_FAMILY_HAN;
    }
    return value;
}

uint16_t LmStringIterator::FinishOrder(const LmCollationRecord* record, const LmCodeSet* set, bool mappedChar,
                                       int mode) {
    if ((record->hasLanguageVariants & languageBit) != 0) {
        const LmLanguage* lang = LmLanguageContext::QueryLanguage(language);
        if (lang != nullptr && lang->tailored != 0) record = LanguageVariant(record, lang);
    }
    while (record->hasContraction != 0) {
        // Nothing follows. A used-up list does not count: stepping over it would
        // leave the text behind its terminator.
        if ((position == nullptr || UnitAt() == 0) && !OverflowActive()) break;
        Forward();
        uint16_t next;
        unsigned char nextCodeSet = codeSet;
        const bool fromOverflow = OverflowActive() != 0;
        if (fromOverflow) {
            uint16_t entry = 0;
            overflow->GetAt(overflowIndex, entry);
            ++overflowIndex;
            nextCodeSet = overflowCodeSet;
            next = LmChar(static_cast<unsigned short>(entry), nextCodeSet, language).GetValue();
        } else {
            next = LmChar(reinterpret_cast<const char*>(position), codeSet, language, format).GetValue();
        }
        if (mappedChar) {
            next =
                LmChar(static_cast<unsigned short>(next), nextCodeSet, language).MapTo(LM_CODESET_UNICODE).GetValue();
        }
        const LmCollationRecord* successor = nullptr;
        for (int i = 0; i < record->followers.count; ++i) {
            uint16_t follower = 0;
            if (record->followers.GetAt(i, follower) == 0 && follower == next) {
                if (record->successors.GetAt(i, successor) != 0) successor = nullptr;
                break;
            }
        }
        if (successor == nullptr) {  // not a contraction: the next character is read again later
            if (fromOverflow) {
                --overflowIndex;
            } else {
                Back();
            }
            break;
        }
        record = successor;
    }

    const uint16_t order = record->order;
    if (mode != 0) {
        if (record->familySource != nullptr) {
            family = *record->familySource;
        } else if (set != nullptr) {
            family = set == codeSetObject ? textFamily : set->family(language);
        }
    }
    if (record->hasExpansion != 0) SetOverflow(&record->expansion, LM_CODESET_ORDER);
    Forward();
    return order;
}

// ---- Transform. ----

void LmStringIterator::Transform(LmStringIterator& target, LmCharOperation& operation) {
    TransformInto(target, operation, nullptr);
}

int LmStringIterator::TransformInto(LmStringIterator& target, LmCharOperation& operation, const unsigned char* limit) {
    const unsigned targetWidth = LmCodeSetWidth(target.codeSet);
    int cut = 0;
    while (!IsEOS()) {
        if (limit != nullptr && target.position + 2 * targetWidth > limit) {
            cut = 1;  // no room for this character and the terminator
            break;
        }
        const LmChar from = **this;
        // Apply runs before the source steps: an overflow it sets holds the source
        // at its place until the list is used up.
        *target = operation.Apply(from, this);
        ++target;
        Forward();
    }
    if (cut) {
        *target = static_cast<unsigned short>(0);
        ++target;
    } else {
        *target = **this;  // the terminator
        ++target;
        Forward();
    }
    return cut;
}
