// Lookup in the generated collation and case tables.
#include "i18ndata.h"

const LmCollationRecord* LmCollationTable::lookup(uint16_t value) const {
    // The low records are dense: no null test on the common path.
    if (value < lowLimit) return &low[value];
    for (uint16_t i = 0; i < rangeCount; ++i) {
        const LmCollationRange& run = ranges[i];
        if (value < run.first) break;
        if (value - run.first < run.count) return &run.records[value - run.first];
    }
    return nullptr;
}

const LmUnicodeProps* LmUnicodePropsOf(uint16_t unicode) {
    for (uint16_t i = 0; i < lmCaseRangeCount; ++i) {
        const LmUnicodePropsRange& run = lmCaseRanges[i];
        if (unicode < run.first) break;
        if (unicode - run.first < run.count) return &run.props[unicode - run.first];
    }
    return nullptr;
}
