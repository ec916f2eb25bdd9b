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
