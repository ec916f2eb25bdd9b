#!/usr/bin/env python3
"""Generates the code set, collation and case tables of lumoi18n.

Inputs: the Unicode Character Database (UnicodeData.txt and SpecialCasing.txt,
Debian package unicode-data, /usr/share/unicode) and the hand-written
tools/collation_tailoring.txt. Output: src/platform/lumoi18n/generated/*.cpp,
committed to the repository; the build never runs this script.

    tools/gen_i18n_tables.py                 regenerate the committed files
    tools/gen_i18n_tables.py --check DIR     generate into a temporary directory and
                                             compare with DIR; exit 1 on a difference,
                                             77 when the UCD files are missing

Standard library only.
"""

import argparse
import difflib
import itertools
import os
import re
import sys
import tempfile

SKIP = 77
HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
DEFAULT_OUT = os.path.join(ROOT, "src", "platform", "lumoi18n", "generated")
DEFAULT_UCD = "/usr/share/unicode"
TAILORING = os.path.join(HERE, "collation_tailoring.txt")

LOW_LIMIT = 0x200          # every value below has a record
UNDEFINED_ORDER = 13       # the undefined ordering indicator
LETTER_A = 3               # letter field of A; Z is 28


class GenError(Exception):
    pass


# ---------------------------------------------------------------------------
# Inputs
# ---------------------------------------------------------------------------
class UChar:
    def __init__(self, fields):
        self.code = int(fields[0], 16)
        self.name = fields[1]
        self.category = fields[2]
        decomposition = fields[5].split()
        self.tag = decomposition[0] if decomposition and decomposition[0].startswith("<") else None
        self.decomposition = [int(x, 16) for x in decomposition if not x.startswith("<")]
        self.digit = int(fields[7]) if fields[7] else None
        self.upper = int(fields[12], 16) if fields[12] else 0
        self.lower = int(fields[13], 16) if fields[13] else 0


def read_unicode_data(path):
    chars = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.rstrip("\n").split(";")
            if len(fields) < 15:
                continue
            ch = UChar(fields)
            if ch.code > 0xFFFF:
                break
            chars[ch.code] = ch
    return chars


def read_special_casing(path):
    """Unconditional full upper cases of more than one character."""
    uppers = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            line = line.split("#", 1)[0].strip()
            if not line:
                continue
            fields = [x.strip() for x in line.split(";")]
            if len(fields) > 4 and fields[4]:
                continue   # language or context conditions
            code = int(fields[0], 16)
            upper = [int(x, 16) for x in fields[3].split()]
            if code <= 0xFFFF and len(upper) > 1:
                uppers[code] = upper
    return uppers


def parse_char(token):
    if token.startswith("U+"):
        return int(token[2:], 16)
    if len(token) != 1:
        raise GenError("not a character: %r" % token)
    return ord(token)


class WordForm:
    """A base character with extension and accent modifiers, e.g. z+e1+a7."""

    def __init__(self, token):
        parts = token.split("+")
        if parts[0] == "U" and len(parts) > 1 and re.fullmatch(r"[0-9A-F]{4}", parts[1]):     # U+XXXX
            parts = ["U+" + parts[1]] + parts[2:]
        self.base = parse_char(parts[0])
        self.ext = None
        self.accent = None
        for mod in parts[1:]:
            if mod[:1] == "e":
                self.ext = int(mod[1:])
            elif mod[:1] == "a":
                self.accent = int(mod[1:])
            else:
                raise GenError("bad modifier in %r" % token)


class Tailoring:
    def __init__(self, path):
        self.accents = {}          # mark name -> number
        self.spaces = {}           # code -> word
        self.symbols = {}          # code -> word, or None for "next"
        self.symbol_from = None
        self.blocks = []           # (first, last, name)
        self.letters = {}          # code -> (WordForm, [chars])
        self.languages = []        # (id, key, tailored, tag, name)
        self.variants = []         # (keys, code, WordForm, [chars])
        self.contractions = []     # (keys, [chars], WordForm)
        with open(path, encoding="utf-8") as f:
            for number, raw in enumerate(f, 1):
                line = raw.split("#", 1)[0].strip()
                if not line:
                    continue
                try:
                    self._line(line.split())
                except (GenError, ValueError, IndexError) as e:
                    raise GenError("%s:%d: %s" % (path, number, e))

    def _line(self, w):
        kind = w[0]
        if kind == "accent":
            self.accents[" ".join(w[2:])] = int(w[1])
        elif kind == "space":
            self.spaces[parse_char(w[1])] = int(w[2])
        elif kind == "symbol":
            self.symbols[parse_char(w[1])] = None if w[2] == "next" else int(w[2])
        elif kind == "symbol-from":
            self.symbol_from = int(w[1])
        elif kind == "block":
            self.blocks.append((parse_char(w[1]), parse_char(w[2]), " ".join(w[3:])))
        elif kind == "letter":
            self.letters[parse_char(w[1])] = (WordForm(w[2]), [parse_char(x) for x in w[3:]])
        elif kind == "language":
            self.languages.append((int(w[1]), w[2], int(w[3]), w[4], " ".join(w[5:])))
        elif kind == "variant":
            self.variants.append((w[1].split(","), parse_char(w[2]), WordForm(w[3]), [parse_char(x) for x in w[4:]]))
        elif kind == "contraction":
            if len(w[2]) < 2:
                raise GenError("a contraction needs two characters or more")
            self.contractions.append((w[1].split(","), [ord(c) for c in w[2]], WordForm(w[3])))
        else:
            raise GenError("unknown line kind %r" % kind)


# ---------------------------------------------------------------------------
# Order words
# ---------------------------------------------------------------------------
def letter_word(letter, lower, accent, ext):
    if not (LETTER_A <= letter <= 31 and 0 <= accent <= 31 and 0 <= ext <= 3):
        raise GenError("letter word out of range")
    return 0x4000 | (0x1000 if lower else 0) | (accent << 7) | (letter << 2) | ext


def is_letter_word(word):
    return 0x4000 <= word <= 0x7FFF


def digit_word(digit, variant=0):
    return 0x3F00 + 10 * digit + variant


def modify(word, form):
    if not is_letter_word(word):
        raise GenError("modifiers on a word that is not a letter: 0x%04x" % word)
    if form.ext is not None:
        word = (word & ~0x3) | form.ext
    if form.accent is not None:
        word = (word & ~(0x1F << 7)) | (form.accent << 7)
    return word


REGULAR_LETTER = re.compile(r"^LATIN (CAPITAL|SMALL) LETTER ([A-Z])(?: WITH (.*))?$")


class Collation:
    """Order words of the generic table (language 1) and the language variants."""

    def __init__(self, chars, tailoring):
        self.chars = chars
        self.t = tailoring
        self.words = {}            # code -> [first word, further words...]
        self.scope = self._scope()
        self.in_scope = set(self.scope)
        self.fresh_symbols = self._number_symbols()
        for code in self.scope:
            self._assign(code)
        self._check_unique()

    def _scope(self):
        codes = list(range(LOW_LIMIT))
        for first, last, _ in self.t.blocks:
            codes += [c for c in range(first, last + 1) if c in self.chars]
        return codes

    def _needs_symbol_word(self, code):
        t = self.t
        if code in t.symbols:
            return t.symbols[code] is None
        if code in t.letters or code in t.spaces or code not in self.chars:
            return False
        return self.chars[code].category[0] in "PS"

    def _number_symbols(self):
        """Symbols without a fixed word take words in code point order."""
        fresh = {}
        word = self.t.symbol_from
        for code in self.scope:
            if self._needs_symbol_word(code):
                if word is None or word >= 0x3F00:
                    raise GenError("symbol words exhausted")
                fresh[code] = word
                word += 1
        return fresh

    def sequence(self, code):
        if code not in self.in_scope:
            raise GenError("U+%04X is used in a word but has no record of its own" % code)
        if code not in self.words:
            self._assign(code)
        return self.words[code]

    def word_of(self, form):
        seq = self.sequence(form.base)
        if len(seq) != 1:
            raise GenError("base U+%04X of a word expands" % form.base)
        return modify(seq[0], form)

    def _assign(self, code):
        if code in self.words:
            return
        if code not in self.chars:
            raise GenError("U+%04X is not assigned" % code)
        self.words[code] = self._derive(code, self.chars[code])

    def _derive(self, code, ch):
        t = self.t
        if code == 0:
            return [0]
        if code in t.letters:
            form, rest = t.letters[code]
            return [self.word_of(form)] + self._expansion(rest)
        if code in self.fresh_symbols:
            return [self.fresh_symbols[code]]
        if code in t.symbols:
            return [t.symbols[code]]
        if code in t.spaces:
            return [t.spaces[code]]
        cat = ch.category
        if cat in ("Cc", "Cf"):
            return [UNDEFINED_ORDER]
        if cat == "Nd" and ch.digit is not None:
            return [digit_word(ch.digit)]
        if cat == "No" and ch.tag == "<super>" and len(ch.decomposition) == 1:
            return [digit_word(self.chars[ch.decomposition[0]].digit, 1)]
        if cat == "No" and ch.tag == "<fraction>":
            first = self.chars[ch.decomposition[0]].digit
            return [digit_word(first, 1)] + self._expansion(ch.decomposition[1:])
        if cat[0] == "L":
            return self._letter(code, ch)
        raise GenError("no rule for U+%04X %s (%s)" % (code, ch.name, cat))

    def _expansion(self, codes):
        out = []
        for c in codes:
            out += self.sequence(c)
        return out

    def _letter(self, code, ch):
        # Ligatures and digraphs that decompose into several letters: the first letter
        # with extension 1, the others as further words.
        if ch.tag == "<compat>" and len(ch.decomposition) > 1 and \
                all(self.chars[c].category[0] == "L" for c in ch.decomposition):
            first = self.sequence(ch.decomposition[0])
            if not is_letter_word(first[0]) or first[0] & 0x3:
                raise GenError("U+%04X: the first letter of its decomposition is no plain letter" % code)
            return [first[0] | 1] + first[1:] + self._expansion(ch.decomposition[1:])
        m = REGULAR_LETTER.match(ch.name)
        if not m:
            raise GenError("letter U+%04X %s needs a line in the tailoring file" % (code, ch.name))
        accent = 0
        if m.group(3):
            if m.group(3) not in self.t.accents:
                raise GenError("U+%04X: no accent number for %r" % (code, m.group(3)))
            accent = self.t.accents[m.group(3)]
        lower = m.group(1) == "SMALL"
        return [letter_word(LETTER_A + ord(m.group(2)) - ord("A"), lower, accent, 0)]

    def _check_unique(self):
        seen = {}
        for code in self.scope:
            seq = tuple(self.words[code])
            if seq == (UNDEFINED_ORDER,) or seq == (0,):
                continue
            if seq in seen:
                raise GenError("U+%04X and U+%04X have the same order words" % (seen[seq], code))
            seen[seq] = code

    def runs(self):
        """Consecutive runs of the block characters above the low records."""
        runs = []
        for code in self.scope[LOW_LIMIT:]:
            if runs and runs[-1][1] == code:
                runs[-1][1] = code + 1
            else:
                runs.append([code, code + 1])
        return [(a, b - a) for a, b in runs]


def case_forms(code):
    """The character and its other case, lower first, for the ASCII letters of contractions."""
    c = chr(code)
    forms = [c.lower(), c.upper()] if c.lower() != c.upper() else [c]
    return [ord(x) for x in forms]


def unicodedata_is_upper(col, code):
    return col.chars[code].category in ("Lu", "Lt")


def check_tree(code, tree):
    """Every prefix of a contraction must be a contraction itself: when the next character
    does not follow, the iterator steps back one character only."""
    for c, node in tree.items():
        if node["word"] is None:
            raise GenError("contraction U+%04X U+%04X... lacks the shorter contraction" % (code, c))
        check_tree(c, node["next"])


# ---------------------------------------------------------------------------
# Output helpers
# ---------------------------------------------------------------------------
HEADER = """\
// generated by tools/gen_i18n_tables.py from the Unicode Character Database
// (UnicodeData.txt, SpecialCasing.txt) and tools/collation_tailoring.txt -- do not edit.
"""


def hex_rows(values, per_row=12, indent="    "):
    rows = []
    for i in range(0, len(values), per_row):
        rows.append(indent + ", ".join("0x%04x" % v for v in values[i:i + per_row]) + ",")
    return "\n".join(rows)


def wrap_items(items, indent="    ", limit=120):
    rows, row = [], indent
    for item in items:
        piece = item + ","
        if row != indent and len(row) + 1 + len(piece) > limit:
            rows.append(row)
            row = indent
        row += (" " if row != indent else "") + piece
    rows.append(row)
    return "\n".join(rows)


def u16_array(name, values):
    return "constexpr uint16_t %s[%d] = {\n%s\n};\n" % (name, len(values), hex_rows(values))


def wlist(name, n):
    return "{{%d, %s}}" % (n, name) if n else "{}"


def cstr(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


# ---------------------------------------------------------------------------
# Collation tables
# ---------------------------------------------------------------------------
def gen_collation(col, t):
    lang_index = {}
    out = [HEADER, '#include "../i18ndata.h"\n\n#include <iterator>\n\n']
    out.append("// Languages, ascending by id from 1. Ids are stored with every string: never renumber.\n")
    out.append("const LmLanguage lmLanguages[] = {\n")
    expected = 1
    for lid, key, tailored, tag, name in t.languages:
        if lid != expected:
            raise GenError("language ids must run from 1 without gaps")
        expected += 1
        lang_index[key] = lid - 1
        out.append("    {%d, %d, %s, %s},\n" % (lid, tailored, cstr(name), cstr(tag)))
    out.append("};\nconst uint8_t lmLanguageCount = %d;\n\nnamespace {\n\n" % len(t.languages))

    # Language variants: one record per (character, language), then shared between
    # the languages whose records are equal. A contraction hangs a tree of successor
    # records below the record of its first character, one level per character.
    per_char = {}          # code -> {language key: [word, expansion, tree]}

    def entry_of(code, key):
        return per_char.setdefault(code, {}).setdefault(key, [None, [], {}])

    for keys, code, form, rest in t.variants:
        for key in keys:
            entry = entry_of(code, key)
            entry[0] = col.word_of(form)
            entry[1] = col._expansion(rest)
    for keys, chars, form in t.contractions:
        word = col.word_of(form)
        # Every case combination of the characters; the first one sets the case of the word.
        for cased in itertools.product(*[case_forms(c) for c in chars]):
            upper = unicodedata_is_upper(col, cased[0])
            cased_word = word & ~0x3000 if upper else (word & ~0x3000) | 0x1000
            for key in keys:
                node = entry_of(cased[0], key)[2]
                for i, c in enumerate(cased[1:]):
                    child = node.setdefault(c, {"word": None, "next": {}})
                    if i == len(cased) - 2:
                        child["word"] = cased_word
                    node = child["next"]
    for code, by_lang in per_char.items():
        for key, entry in by_lang.items():
            if key not in lang_index or t.languages[lang_index[key]][2] == 0:
                raise GenError("variant for unknown or untailored language %r" % key)
            if entry[0] is None:
                generic = col.sequence(code)
                entry[0], entry[1] = generic[0], generic[1:]
            check_tree(code, entry[2])

    defs = []              # definitions in dependency order
    record_names = {}      # record text -> name, to share equal records
    counter = [0]

    arrays = {}            # (type, contents) -> name, to share equal arrays

    def array_name(prefix):
        counter[0] += 1
        return "k%s%d" % (prefix, counter[0])

    def emit_array(prefix, element, items):
        key = (element, tuple(items))
        if key not in arrays:
            name = array_name(prefix)
            line = "constexpr %s %s[] = {%s};\n" % (element, name, ", ".join(items))
            if len(line) > 121:
                line = "constexpr %s %s[] = {\n%s\n};\n" % (element, name, wrap_items(items))
            defs.append(line)
            arrays[key] = name
        return arrays[key]

    def emit_u16(prefix, values):
        return emit_array(prefix, "uint16_t", ["0x%04x" % v for v in values])

    def record_text(order, expansion, successors, followers, languages, lang_records):
        exp = emit_u16("Exp", expansion) if expansion else None
        fol = emit_u16("Follow", followers) if followers else None
        suc = emit_array("Next", "const LmCollationRecord*", ["&" + s for s in successors]) if successors else None
        lng = rec = None
        if languages:
            lng = emit_array("Lang", "const LmLanguage*", ["&lmLanguages[%d]" % i for i in languages])
            rec = emit_array("LangRec", "const LmCollationRecord*", ["&" + r for r in lang_records])
        # The language flag holds the bit of every language listed (LmLanguageBit), so
        # that a reader rules out its language without searching the list.
        language_bits = 0
        for i in languages:
            language_bits |= 1 << ((i + 1) & 15)
        return "{nullptr, %s, %s, %s, 0x%04x, %s, %s, %d, %s, %d}" % (
            wlist(suc, len(successors)), wlist(lng, len(languages)), wlist(rec, len(lang_records)), order,
            wlist(exp, len(expansion)), wlist(fol, len(followers)),
            1 if followers else 0, "0x%04x" % language_bits if languages else "0", 1 if expansion else 0)

    def named_record(text, comment):
        if text not in record_names:
            name = array_name("Rec")
            defs.append("// %s\nconstexpr LmCollationRecord %s = %s;\n" % (comment, name, text))
            record_names[text] = name
        return record_names[text]

    def successor_records(tree, path, key):
        names = []
        for c, node in tree.items():
            below = successor_records(node["next"], path + [c], key)
            text = record_text(node["word"], [], below, list(node["next"]), [], [])
            names.append(named_record(text, " ".join("U+%04X" % x for x in path + [c]) + " in " + key))
        return names

    def variant_record(code, key, entry):
        word, expansion, tree = entry
        successors = successor_records(tree, [code], key)
        return named_record(record_text(word, expansion, successors, list(tree), [], []),
                            "U+%04X in %s" % (code, key))

    patches = {}           # code -> record text
    for code in col.scope:
        seq = col.words[code]
        langs, recs = [], []
        for key, entry in sorted(per_char.get(code, {}).items(), key=lambda kv: lang_index[kv[0]]):
            langs.append(lang_index[key])
            recs.append(variant_record(code, key, entry))
        if len(seq) > 1 or langs:
            patches[code] = record_text(seq[0], seq[1:], [], [], langs, recs)

    def run_block(first, count):
        suffix = "%04X" % first
        orders = [col.words[c][0] for c in range(first, first + count)]
        text = ["// Order words of U+%04X..U+%04X.\n" % (first, first + count - 1),
                u16_array("kOrders" + suffix, orders)]
        mine = [(c, patches[c]) for c in range(first, first + count) if c in patches]
        if mine:
            text.append("constexpr LmRecordPatch kPatches%s[] = {\n" % suffix)
            for c, rec in mine:
                text.append("    // U+%04X %s\n    {0x%03x, %s},\n" % (c, col.chars[c].name, c - first, rec))
            text.append("};\n")
            build = "LmBuildRecords(kOrders%s, kPatches%s, std::size(kPatches%s))" % (suffix, suffix, suffix)
        else:
            build = "LmBuildRecords(kOrders%s, nullptr, 0)" % suffix
        text.append("constinit const std::array<LmCollationRecord, %d> kRecords%s =\n    %s;\n\n"
                    % (count, suffix, build))
        return "".join(text)

    blocks = [run_block(0, LOW_LIMIT)]
    runs = col.runs()
    for first, count in runs:
        blocks.append(run_block(first, count))

    out.append("// Records of the slow paths: expansions, language variants, contractions.\n")
    out += defs
    out.append("\n")
    out += blocks
    out.append("constexpr LmCollationRange kUnicodeRuns[] = {\n")
    for first, count in runs:
        out.append("    {0x%04x, %d, kRecords%04X.data()},\n" % (first, count, first))
    out.append("};\n\n}  // namespace\n\n")
    out.append("// ISO-8859-1 is the first 256 values of Unicode: code set 1 shares those records.\n")
    out.append("constinit const LmCollationTable lmLatin1Collation(kRecords0000.data(), 0x100, nullptr, 0);\n")
    out.append("constinit const LmCollationTable lmUnicodeCollation(kRecords0000.data(), 0x%x, kUnicodeRuns,\n"
               "                                                   std::size(kUnicodeRuns));\n" % LOW_LIMIT)
    return "".join(out)


# ---------------------------------------------------------------------------
# Case tables
# ---------------------------------------------------------------------------
def gen_case(col, chars, special):
    out = [HEADER, '#include "../i18ndata.h"\n\n#include <iterator>\n\nnamespace {\n\n']
    runs = [(0, LOW_LIMIT)] + col.runs()
    for first, count in runs:
        codes = range(first, first + count)
        suffix = "%04X" % first
        upper = [chars[c].upper if c in chars else 0 for c in codes]
        lower = [chars[c].lower if c in chars else 0 for c in codes]
        patched = [c for c in codes if c in special]
        for c in patched:
            upper[c - first] = special[c][0]
        out.append("// Upper and lower case of U+%04X..U+%04X, Unicode values, 0 for none.\n"
                   % (first, first + count - 1))
        up = lo = "nullptr"
        if any(upper):
            out.append(u16_array("kUpper" + suffix, upper))
            up = "kUpper" + suffix
        if any(lower):
            out.append(u16_array("kLower" + suffix, lower))
            lo = "kLower" + suffix
        patch = "nullptr, 0"
        if patched:
            for c in patched:
                out.append("constexpr uint16_t kRest%04X[] = {%s};\n" %
                           (c, ", ".join("0x%04x" % v for v in special[c][1:])))
            out.append("constexpr LmPropsPatch kCasePatches%s[] = {\n" % suffix)
            for c in patched:
                out.append("    {0x%03x, {0x%04x, {{%d, kRest%04X}}, 0x%04x}},\n" %
                           (c - first, special[c][0], len(special[c]) - 1, c, lower[c - first]))
            out.append("};\n")
            patch = "kCasePatches%s, std::size(kCasePatches%s)" % (suffix, suffix)
        out.append("constinit const std::array<LmUnicodeProps, %d> kCase%s =\n    LmBuildProps<%d>(%s, %s, %s);\n\n"
                   % (count, suffix, count, up, lo, patch))
    out.append("}  // namespace\n\nconst LmUnicodePropsRange lmCaseRanges[] = {\n")
    for first, count in runs:
        out.append("    {0x%04x, %d, kCase%04X.data()},\n" % (first, count, first))
    out.append("};\nconst uint16_t lmCaseRangeCount = %d;\n" % len(runs))
    return "".join(out)


# ---------------------------------------------------------------------------
# Code set tables
# ---------------------------------------------------------------------------
def byte_table(codec):
    high = []
    for b in range(0x80, 0x100):
        try:
            high.append(ord(bytes([b]).decode(codec)))
        except UnicodeDecodeError:
            high.append(b)        # undefined bytes stand for the C1 control of the same value
    return high


def gen_codesets():
    out = [HEADER, '#include "../i18ndata.h"\n\n']
    for name, codec, title in (("Cp1252", "cp1252", "Windows-1252"), ("Latin9", "iso8859_15", "ISO-8859-15")):
        high = byte_table(codec)
        if len(set(high)) != 128:
            raise GenError("%s maps two bytes to one character" % title)
        pairs = sorted((u, 0x80 + i) for i, u in enumerate(high))
        out.append("// %s: Unicode of the bytes 0x80..0xFF.\n" % title)
        out.append("const uint16_t lm%sHigh[128] = {\n%s\n};\n" % (name, hex_rows(high)))
        out.append("// %s: the same pairs sorted by Unicode value.\n" % title)
        out.append("const LmUnicodeToByte lm%sFromUnicode[128] = {\n" % name)
        for i in range(0, 128, 6):
            out.append("    " + " ".join("{0x%04x, 0x%02x}," % p for p in pairs[i:i + 6]) + "\n")
        out.append("};\n\n")
    return "".join(out).rstrip("\n") + "\n"


# ---------------------------------------------------------------------------
def generate(ucd, out_dir):
    chars = read_unicode_data(os.path.join(ucd, "UnicodeData.txt"))
    special = read_special_casing(os.path.join(ucd, "SpecialCasing.txt"))
    tailoring = Tailoring(TAILORING)
    col = Collation(chars, tailoring)
    files = {
        "collation_tables.cpp": gen_collation(col, tailoring),
        "case_tables.cpp": gen_case(col, chars, {c: v for c, v in special.items() if c in col.words}),
        "codeset_tables.cpp": gen_codesets(),
    }
    os.makedirs(out_dir, exist_ok=True)
    for name, text in files.items():
        with open(os.path.join(out_dir, name), "w", encoding="utf-8", newline="\n") as f:
            f.write(text)
    return sorted(files)


def check(ucd, committed):
    with tempfile.TemporaryDirectory() as tmp:
        names = generate(ucd, tmp)
        differ = False
        for name in names:
            with open(os.path.join(tmp, name), encoding="utf-8") as f:
                fresh = f.readlines()
            path = os.path.join(committed, name)
            try:
                with open(path, encoding="utf-8") as f:
                    old = f.readlines()
            except FileNotFoundError:
                old = []
            if fresh != old:
                differ = True
                sys.stdout.writelines(difflib.unified_diff(old, fresh, path, "generated/" + name, n=1))
        if differ:
            print("the committed tables differ from the generator's output: run tools/gen_i18n_tables.py")
            return 1
        print("committed tables match the generator (%s)" % ", ".join(names))
        return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--ucd", default=DEFAULT_UCD, help="directory of UnicodeData.txt and SpecialCasing.txt")
    parser.add_argument("--out", default=DEFAULT_OUT, help="output directory")
    parser.add_argument("--check", metavar="DIR", help="compare a fresh generation with the files in DIR")
    args = parser.parse_args()
    for needed in ("UnicodeData.txt", "SpecialCasing.txt"):
        if not os.path.isfile(os.path.join(args.ucd, needed)):
            print("SKIPPED: %s not found in %s (install unicode-data)" % (needed, args.ucd))
            return SKIP
    try:
        if args.check:
            return check(args.ucd, args.check)
        for name in generate(args.ucd, args.out):
            print("wrote", os.path.join(args.out, name))
        return 0
    except GenError as e:
        print("gen_i18n_tables: error:", e, file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
