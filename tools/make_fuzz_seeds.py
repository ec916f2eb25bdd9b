#!/usr/bin/env python3
"""Writes the seed corpus of the fuzz targets in tests/fuzz/corpus/.

Each seed is the choice bytes a target reads first, followed by its data; the
layouts are those of the targets' sources (tests/fuzz/*.cpp). The seeds are small,
well-formed images of every string disk form, plus a few broken ones, so that the
smoke runs of the test suite pass through every branch the inputs select. The files
named regress_* (inputs that once found a fault) and fz_* (a sample of a libFuzzer
run's merged corpus) are kept beside them as they are; this script leaves them alone."""
import os
import struct
import sys

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "fuzz", "corpus")


def rec(text, cs=1, lang=1, big=False, wide=False):
    """A current-form record: length word, code set, language, text, 00 FF."""
    if wide:
        body = b"".join(struct.pack(">H" if big else "<H", ord(c)) for c in text)
    else:
        body = text.encode("latin-1")
    length = len(body) + 4
    return struct.pack(">H" if big else "<H", length) + bytes([cs, lang]) + body + b"\x00\xff"


def key(words, family=1, cut=False):
    """An order-form key, words low byte first, 00 FF unless cut short."""
    body = b"".join(struct.pack("<H", w) for w in words)
    length = len(body) + 4
    tail = b"" if cut else b"\x00\xff"
    return struct.pack("<H", length) + bytes([254, family]) + body + tail


def fixed(*texts, flag=0x40, big=False):
    """A stored array of fixed-form strings: flag, T, the strings each with a zero."""
    body = b"".join(t + b"\x00" for t in texts)
    return bytes([flag]) + struct.pack(">H" if big else "<H", len(body)) + body


def sized(b):
    """A key after its length byte."""
    return bytes([len(b)]) + b


def dt(year, month, day, hour=0, minute=0, second=0, nanoseconds=0):
    """A nanosecond date-time record in memory: 12 bytes."""
    return struct.pack("<hbbbbbxi", year, month, day, hour, minute, second, nanoseconds)


def fmt(text):
    """A format text behind its length word."""
    return struct.pack("<H", len(text)) + text


# Stored operands behind a record: three dates low byte first (one with wildcards).
DISK = b"\xd1\x07\x02\x03" + b"\xff\xff\xff\x05" + b"\x00\x80\x80\x80"

OLD_AB = b"\x04\x00ab\x00\x00"  # old form: "ab" and ""
NULL = b"\x04\x00\x00\xfe\x00\xff"


def blob(elements, big=False):
    """A blob array image: total word, then per element a length word (0xFFFFFFFF for
    None) and the bytes."""
    order = ">I" if big else "<I"
    body = b"".join(struct.pack(order, 0xFFFFFFFF) if e is None else struct.pack(order, len(e)) + e
                    for e in elements)
    return struct.pack(order, len(body)) + body


# Values for the round trips of fuzz_identity: an object id, a class id, a reference.
ROUND = struct.pack("<IIH", 4, 123, 7) + struct.pack("<HH", 5, 2) + struct.pack("<IIHHHH", 4, 123, 7, 3, 9, 2)

SEEDS = {
    # format index (1, 2, 0x81, 0x82, 0), count, left size (16 bits), left image, right image
    "fuzz_blob": {
        "one_each": bytes([0, 1]) + struct.pack("<H", 11) + blob([b"abc"]) + blob([b"abd"]),
        "three_states": bytes([0, 3]) + struct.pack("<H", 17) + blob([None, b"", b"\0"]) + blob([None, b"", b"x"]),
        "big_endian": bytes([1, 2]) + struct.pack("<H", 14) + blob([b"ab", b""], big=True) + blob([b"ab"], big=True),
        "forged_total": bytes([0, 1]) + struct.pack("<H", 11) + struct.pack("<II", 0xFFFFFF00, 3) + b"abc"
        + struct.pack("<II", 0x7FFFFFFF, 0x7FFFFFF0) + b"ab",
        "length_beyond": bytes([0, 2]) + struct.pack("<H", 11) + struct.pack("<II", 7, 0x40) + b"abc"
        + struct.pack("<I", 0xFFFFFFFF),
        "cut_image": bytes([0, 1]) + struct.pack("<H", 6) + blob([b"abc"])[:6] + blob([b"abc"])[:9],
        "array_walk": bytes([0, 2]) + struct.pack("<H", 16) + blob([b"ab", b"cd"]) + blob([b"ab", b"cd"]),
    },
    # choice (below 128: the format from the input; else a known one, by choice % 8; odd: a
    # 16-bit text), format length, format, round-trip bytes (10 + 4 + 16), text
    "fuzz_identity": {
        "exchange_objid": bytes([128, 0]) + ROUND + b"(7-123#4)",
        "no_high_part": bytes([128, 0]) + ROUND + b"123#4",
        "class_wide": bytes([129, 0]) + ROUND + "(5v2)".encode("utf-16-le"),
        "ref_long": bytes([131, 0]) + ROUND + b"(3:7-123#4,9v2)",
        "positional": bytes([132, 0]) + ROUND + b"(7-123#4)",
        "own_format": bytes([0, 9]) + b"%hu%l%%%H" + ROUND + b"12 34%56",
        "null_text": bytes([130, 0]) + ROUND + b"{NULL}(1-2#3)",
        "overflow": bytes([128, 0]) + ROUND + b"(99999999999999999999999-4294967296#-1)",
    },
    # format index (1, 2, 0x81, 0x82, 0x21, 0x42), count, level, image
    "fuzz_string_load": {
        "abc_le": bytes([0, 1, 1]) + rec("abc"),
        "abc_be": bytes([1, 1, 1]) + rec("abc", big=True),
        "wide_le": bytes([0, 1, 1]) + rec("AB", cs=253, wide=True),
        "wide_be": bytes([1, 1, 1]) + rec("AB", cs=253, big=True, wide=True),
        "two_records": bytes([0, 2, 1]) + rec("x") + rec("yz", cs=2),
        "old_form": bytes([0, 2, 0]) + OLD_AB,
        "null_value": bytes([0, 1, 1]) + NULL,
        "count_zero": bytes([0, 0, 1]) + rec("abc"),
        "length_beyond": bytes([0, 1, 1]) + b"\xff\x7f\x01\x01abc",
    },
    # level, source format (1, 2, 0x81, 0x82, 8), target format (1, 2, 8, 0x81,
    # 0x82, 0xA1, 0xC1, 0xE2, 0x21, 0x41), count - 1, target length, source
    "fuzz_string_translate": {
        "order_key": bytes([1, 0, 3, 0]) + struct.pack("<H", 64) + rec("Kaffee"),
        "order_key_cut": bytes([1, 0, 3, 0]) + struct.pack("<H", 9) + rec("Strasse"),
        "order_key_wide": bytes([1, 0, 4, 0]) + struct.pack("<H", 300) + rec("Ab", cs=253, wide=True),
        "copy_same": bytes([1, 0, 0, 0]) + struct.pack("<H", 16) + rec("abc"),
        "copy_unequal": bytes([1, 0, 1, 0]) + struct.pack("<H", 16) + rec("abc"),
        "old_upgrade": bytes([1, 0, 5, 0]) + struct.pack("<H", 16) + b"\x03\x00ab\x00",
        "load_key": bytes([1, 2, 2, 1]) + struct.pack("<H", 0) + key([0x4180, 0x4184], cut=True),
        "load_record": bytes([1, 0, 2, 0]) + struct.pack("<H", 0) + rec("abc"),
        "memory_to_key": bytes([1, 4, 3, 0]) + struct.pack("<H", 40) + bytes([1, 1, 4]) + b"Ab-c",
        "memory_to_disk": bytes([1, 4, 0, 1]) + struct.pack("<H", 40) + bytes([4, 1, 2]) + "Ä".encode("utf-16-le")
        + bytes([1, 2, 1]) + b"z",
        "legacy_down": bytes([0, 0, 0, 0]) + struct.pack("<H", 16) + rec("abc"),
        "legacy_memory": bytes([0, 4, 0, 0]) + struct.pack("<H", 16) + bytes([1, 1, 3]) + b"abc",
    },
    # level, format (1, 2, 0x81, 0x82, 8), option, count, length mode, left size, left, right
    "fuzz_string_cmp_hash": {
        "records_equal": bytes([1, 0]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<H", 9)
        + rec("abc") + rec("abc"),
        "records_less": bytes([1, 0]) + struct.pack("<H", 0x10) + bytes([1, 0]) + struct.pack("<H", 9)
        + rec("abc") + rec("abd"),
        "keys_cut": bytes([1, 2]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<H", 10)
        + key([0x4180, 0x4184, 0x4188], cut=True) + key([0x4180, 0x4184]),
        "keys_mixed": bytes([1, 2]) + struct.pack("<H", 0x80) + bytes([1, 0]) + struct.pack("<H", 10)
        + key([0x4180], family=0x81) + key([0x4180, 0x4184]),
        "wildcard": bytes([1, 0]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<H", 10)
        + rec("abcd") + rec("ab*"),
        "old_forms": bytes([0, 0]) + struct.pack("<H", 0) + bytes([2, 0]) + struct.pack("<H", 6) + OLD_AB + OLD_AB,
        "all_lengths": bytes([1, 1]) + struct.pack("<H", 0) + bytes([1, 3]) + struct.pack("<H", 9)
        + rec("abc", big=True) + rec("abc", big=True),
        "memory": bytes([1, 4]) + struct.pack("<H", 0) + bytes([2, 0]) + bytes([1, 1, 3]) + b"abc"
        + bytes([4, 2, 4]) + "ab".encode("utf-16-le") + bytes([1, 1, 3]) + b"abd" + bytes([0, 0, 2]) + b"ab",
    },
    # code sets, languages, option, count, format, flags, left size, left, right
    "fuzz_strcmp": {
        "latin1_equal": bytes([1, 1, 1, 1]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 0, 3])
        + b"abcabc",
        "accents": bytes([1, 1, 2, 2]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 4, 5])
        + "résumé".encode("latin-1")[:5] + "resume".encode("latin-1"),
        "star": bytes([1, 1, 1, 1]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 0, 7])
        + b"abxababab*ab",
        "question": bytes([1, 1, 1, 1]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 0, 1])
        + b"aa?",
        "mixed_sets": bytes([1, 4, 1, 1]) + struct.pack("<H", 0x20) + struct.pack("<h", -1) + bytes([0, 0, 3])
        + b"ABC" + "abc".encode("utf-16-le"),
        "native": bytes([0, 0, 0, 0]) + struct.pack("<H", 0) + struct.pack("<h", 5) + bytes([0, 0, 4])
        + b"abcdab*d",
        "spaces": bytes([1, 1, 1, 1]) + struct.pack("<H", 0x80) + struct.pack("<h", -1) + bytes([0, 4, 4])
        + b"ab cabc",
        "order_words": bytes([5, 5, 1, 1]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 0, 4])
        + struct.pack("<HH", 0x4180, 0x4184) + struct.pack("<HH", 0x4180, 0x4188),
        "null_left": bytes([1, 1, 9, 1]) + struct.pack("<H", 0) + struct.pack("<h", -1) + bytes([0, 1, 0]) + b"*",
    },
    # id (odd: LmCaseIString), format (1, 2, 0x81, 0x82, 0x21), target (1, 2, 0x81,
    # 0x82, 8), option, count, length mode, target length, left size, left, right
    "fuzz_fixed_string": {
        "plain_equal": bytes([1, 0, 2]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<HH", 16, 7)
        + fixed(b"abc") + fixed(b"ABC"),
        "plain_wild": bytes([0, 1, 1]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<HH", 16, 7)
        + fixed(b"abc", big=True) + fixed(b"a*c", big=True),
        "key_left": bytes([1, 2, 4]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<HH", 8, 7)
        + fixed(b"\x54\x5b\x5e", flag=0xC0) + fixed(b"abd*"),
        "key_cut": bytes([1, 2, 3]) + struct.pack("<H", 0) + bytes([1, 2]) + struct.pack("<HH", 6, 5)
        + fixed(b"abcdef")[:5] + fixed(b"abcxyz"),
        "arrays": bytes([0, 0, 0]) + struct.pack("<H", 0x10) + bytes([3, 3]) + struct.pack("<HH", 40, 9)
        + fixed(b"a", b"b", b"c") + fixed(b"a", b"x", b"c"),
        "escape": bytes([1, 4, 2]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<HH", 12, 7)
        + fixed(b"a\nb") + fixed(b"a\\nb"),
        "long_cut": bytes([1, 0, 0]) + struct.pack("<H", 0) + bytes([1, 0]) + struct.pack("<HH", 300, 260)
        + fixed(b"q" * 300)[:260] + fixed(b"q" * 300),
    },
    # legacy, id index (o_char, o_2b, o_4b, o_double, o_float, o_u2b, o_u4b, int,
    # unsigned, enum, o_u1b, LmString, BlockId, LmIString, LmCaseIString, o_8b, o_u8b),
    # comparison word, format (1, 2, 0x81, 0x82), count - 1, mode (1 range, 2 no lower
    # key, 4 no upper key, 8 a preset bound, 16 preset lower, 32 no out), key
    # capacity, lower key, upper key (each after its length byte), [preset], value
    "fuzz_eval_bound": {
        "long_eq": bytes([0, 2]) + struct.pack("<H", 1) + bytes([0, 0, 1, 0])
        + sized(struct.pack("<i", 10)) + sized(struct.pack("<i", 19)) + struct.pack("<i", 15),
        "long_big_ne": bytes([0, 2]) + struct.pack("<H", 6) + bytes([1, 1, 1, 0])
        + sized(struct.pack(">i", 10)) + sized(struct.pack(">i", 19)) + struct.pack(">ii", 25, 3),
        "double_nan": bytes([0, 3]) + struct.pack("<H", 7) + bytes([0, 0, 1, 0])
        + sized(struct.pack("<d", float("nan"))) + sized(struct.pack("<d", 9.0)) + struct.pack("<d", 1.0),
        "u8b_collapsed": bytes([0, 16]) + struct.pack("<H", 2) + bytes([0, 0, 1, 0])
        + sized(struct.pack("<Q", 1 << 63)) + sized(struct.pack("<Q", (1 << 63) + 2))
        + struct.pack("<Q", (1 << 63) + 1),
        "int_no_range": bytes([0, 7]) + struct.pack("<H", 3) + bytes([0, 2, 0, 0]) + sized(b"") + sized(b"")
        + struct.pack("<iii", 1, 2, 3),
        "string_prefix": bytes([0, 11]) + struct.pack("<H", 1) + bytes([0, 0, 1, 20])
        + sized(key([0x400C, 0x500C, 0x5038])) + sized(key([0x4070, 0x505C, 0x5014, 0x5034, 0x501C, 0x5050]))
        + key([0x403C, 0x535C, 0x009F]),
        "string_cut_range": bytes([0, 11]) + struct.pack("<H", 5 | 0x60) + bytes([0, 0, 1, 10])
        + sized(key([0x400C, 0x500C], cut=True)) + sized(key([0x4070, 0x505C, 0x5014], cut=True))
        + key([0x4070, 0x505C, 0x5014, 0x5034]),
        "string_record": bytes([0, 11]) + struct.pack("<H", 1 | 0x280 | 0x1000) + bytes([1, 0, 1, 0])
        + sized(rec("Aal", big=True)) + sized(rec("Zucker", big=True)) + rec("M\u00fc*", lang=2, big=True),
        "string_leading_star": bytes([0, 11]) + struct.pack("<H", 1) + bytes([0, 0, 1, 0])
        + sized(key([0x400C])) + sized(key([0x4070])) + key([0x009F, 0x400C]),
        "string_empty_skip": bytes([0, 11]) + struct.pack("<H", 1 | 0x80) + bytes([0, 0, 1, 0])
        + sized(key([0x400C])) + sized(key([0x4070])) + key([]),
        "string_native": bytes([0, 11]) + struct.pack("<H", 1) + bytes([0, 0, 1, 0])
        + sized(rec("\u00e4x", cs=0, lang=0)) + sized(rec("\u00e4x", cs=0, lang=0)) + rec("\u00f6y", cs=0, lang=0),
        "string_old_form": bytes([1, 11]) + struct.pack("<H", 1) + bytes([0, 0, 1, 0])
        + sized(b"\x02\x00a\x00") + sized(b"\x02\x00z\x00") + b"\x04\x00ab*\x00",
        "string_preset": bytes([0, 11]) + struct.pack("<H", 3) + bytes([0, 0, 1 | 8 | 16, 0])
        + sized(key([0x400C])) + sized(key([0x4070])) + sized(key([0x4030])) + key([0x4040, 0x009F]),
        "string_no_out": bytes([0, 11]) + struct.pack("<H", 1) + bytes([0, 0, 1 | 32, 0])
        + sized(key([0x400C])) + sized(key([0x4070])) + key([0x4040, 0x009F]),
        "fixed_case_prefix": bytes([0, 14]) + struct.pack("<H", 3) + bytes([0, 0, 1, 40])
        + sized(fixed(b"\x54", flag=0xC0)) + sized(fixed(b"\xb7", flag=0xC0)) + fixed(b"ab*"),
        "fixed_plain_star": bytes([0, 13]) + struct.pack("<H", 1) + bytes([1, 0, 1, 0])
        + sized(fixed(b"\x54", flag=0xC0, big=True)) + sized(fixed(b"\xb7", flag=0xC0, big=True))
        + fixed(b"?x", big=True),
        "fixed_shared": bytes([0, 14]) + struct.pack("<H", 2) + bytes([0, 0, 1, 0])
        + sized(fixed(b"\x54\x5b\x5e\x61\x54", flag=0xC0)) + sized(fixed(b"\x54\x5b\x5e\x61\xb7", flag=0xC0))
        + fixed(b"ABCDE"),
        "fixed_long": bytes([0, 14]) + struct.pack("<H", 1) + bytes([0, 0, 0, 60]) + sized(b"") + sized(b"")
        + fixed(b"x" * 300),
        # ids 17 (LmObjId), 18 (LmClassId), 19 (LmRef), 20 (LmBlob)
        "objid_range": bytes([0, 17]) + struct.pack("<H", 2) + bytes([1, 1, 1, 0])
        + sized(struct.pack(">IIH", 7, 0, 0)) + sized(struct.pack(">IIH", 7, 99, 1)) + struct.pack(">IIHIIH", 7, 5, 0, 8, 6, 0),
        "ref_any": bytes([0, 19]) + struct.pack("<H", 5) + bytes([0, 0, 0, 0]) + sized(b"") + sized(b"")
        + struct.pack("<IIHHH", 1, 2, 3, 4, 5),
        "classid_blob": bytes([0, 18]) + struct.pack("<H", 7) + bytes([0, 0, 1, 0]) + sized(b"\1") + sized(b"\2")
        + b"\0\0\0\0",
    },
    # id index (0-10, 14, 26, 42, 43, 27, 39), format index (1, 2, 8, 0, 0x81, 0x82), count,
    # length mode (bit 0 left "all", bit 1 right "all", bit 2 step 'M'), option,
    # left size, left, right
    "fuzz_fixed_values": {
        "int64_le": bytes([12, 0, 2, 0]) + struct.pack("<HH", 0, 16) + struct.pack("<qq", -2, 1 << 40)
        + struct.pack("<qq", -2, 1 << 41),
        "int64_be": bytes([12, 1, 2, 0]) + struct.pack("<HH", 0, 16) + struct.pack(">IiIi", 0xFFFFFFFE, -1, 0, 256)
        + struct.pack(">IiIi", 0xFFFFFFFE, -1, 0, 512),
        "int64_all": bytes([12, 0, 3, 3]) + struct.pack("<HH", 0, 8) + struct.pack("<q", 7)
        + struct.pack("<qqq", 7, 8, 9),
        "int64_cut": bytes([12, 1, 3, 0]) + struct.pack("<HH", 0, 12) + bytes(range(12)) + bytes(range(5)),
        "int64_memory": bytes([12, 2, 2, 0]) + struct.pack("<HH", 0, 16) + struct.pack("<qq", 1, -1)
        + struct.pack("<qq", 1, 0),
        "int64_largest": bytes([12, 3, 1, 4]) + struct.pack("<HH", 0, 8) + struct.pack("<q", (1 << 63) - 1),
        "long_be": bytes([2, 1, 2, 0]) + struct.pack("<HH", 0, 8) + struct.pack(">ii", 5, -5)
        + struct.pack(">ii", 5, 6),
        "double_le": bytes([3, 0, 1, 0]) + struct.pack("<HH", 0, 8) + struct.pack("<d", -0.5)
        + struct.pack("<d", float("nan")),
        "boolean_states": bytes([15, 0, 4, 0]) + struct.pack("<HH", 0, 4) + bytes([0, 1, 255, 0x80])
        + bytes([255, 1, 2, 0]),
        "boolean_null_step": bytes([15, 5, 1, 4]) + struct.pack("<HH", 0, 1) + bytes([255]) + bytes([0]),
        "seal_be": bytes([16, 1, 2, 0]) + struct.pack("<HH", 0, 12) + bytes.fromhex("123456789abc000100000000")
        + bytes.fromhex("123456789abc0000ffffffff"),
        "seal_cut": bytes([16, 0, 3, 1]) + struct.pack("<HH", 0, 6) + bytes.fromhex("800000000001")
        + bytes.fromhex("8000000000"),
        "seal_memory": bytes([16, 2, 2, 0]) + struct.pack("<HH", 0, 12) + struct.pack("<6H", 1, 2, 3, 4, 5, 6)
        + struct.pack("<6H", 1, 2, 3, 4, 5, 7),
    },
    # format index (1, 2, 8, 0, 0x81, 0x42), option, 24 bytes (a record, then stored
    # dates and times), format text
    "fuzz_datetime_print": {
        "exchange_date": bytes([0]) + struct.pack("<H", 0) + dt(2001, 2, 3, 13, 5, 9) + DISK + b"%a %e.%b %Y",
        "twelve_hour": bytes([1]) + struct.pack("<H", 0) + dt(0, 0, 0, 0, 5, 9) + DISK + b"%I:%M:%S %p",
        "groups": bytes([2]) + struct.pack("<H", 0x10) + dt(0, 0, 2, 0, 7, 0) + DISK + b"%?(J.)%?H:%M %?(H)y",
        "wildcards": bytes([0]) + struct.pack("<H", 0) + dt(-1, -1, 3, -1, 0, -1, -1) + DISK
        + b"%Y-%m-%d %f %N %J %p%% %y",
        "null": bytes([1]) + struct.pack("<H", 0) + dt(-32768, -128, -128, -128, -128, -128) + DISK + b"%X",
        "fraction": bytes([3]) + struct.pack("<H", 0xFFFF) + dt(1, 1, 10, 23, 59, 5, 123456) + DISK + b"%f %V %X %D",
        "cut": bytes([4]) + struct.pack("<H", 0) + dt(2001, 2, 3) + DISK + b"%Y%?(",
        "names": bytes([5]) + struct.pack("<H", 0) + dt(4600, 13, 0, 12) + DISK + b"%A %B %b %P %I",
    },
    # format length, format, code set index (0, 1, 253), text
    "fuzz_datetime_scan": {
        "date": fmt(b"%Y-%m-%d") + bytes([0]) + b"2001-02-03",
        "exchange": fmt(b"%a %e.%b %Y") + bytes([1]) + b"Sat 3.Feb 2001",
        "twelve_hour": fmt(b"%I:%M:%S %p") + bytes([0]) + b"01:05:09 pm",
        "wide": fmt(b"%D") + bytes([2]) + "2001/*/03".encode("utf-16-le"),
        "span": fmt(b"%V") + bytes([0]) + b"400.00:00:00.5",
        "wildcard_compound": fmt(b"%X") + bytes([0]) + b"*",
        "null": fmt(b"%Y") + bytes([0]) + b"{NULL}x",
        "digits": fmt(b"%Y%y%J%N%f%b") + bytes([0]) + b"9" * 40,
        "percents": fmt(b"%" * 64) + bytes([0]) + b"%" * 10,
        "names": fmt(b"%A %B %b %p %?(H)%M") + bytes([1]) + b"Saturday February Dec pm 05 07",
        "cut": fmt(b"%d%?(") + bytes([0]) + b"5",
    },
}


def main():
    for target, seeds in SEEDS.items():
        folder = os.path.join(ROOT, target)
        os.makedirs(folder, exist_ok=True)
        for name, data in seeds.items():
            with open(os.path.join(folder, name), "wb") as f:
                f.write(data)
    return 0


if __name__ == "__main__":
    sys.exit(main())
