#pragma once

// What is compared with what. The names are those of the benchmarks; "name/counter" is a counter of
// a benchmark, and a row without a yardstick is the value itself.
struct Row {
    enum Kind { AtMost, Faster, Exactly, NoGoal };

    const char *name;
    const char *measured;
    const char *yardstick;
    Kind kind;
    double goal = 0;
};

inline constexpr Row rows[] = {
    {"region lookup with its debug lines: times faster than split, convert, scan", "region_logged",
        "region_plain", Row::Faster, 15},
    {"region lookup without debug lines: times faster than split, convert, scan", "region_quiet",
        "region_plain", Row::Faster, 40},
    {"region lookup, debug lines to a file: times split, convert, scan", "region_written",
        "region_plain", Row::NoGoal},
    {"region lookup without debug lines: allocations", "region_quiet/allocations", "", Row::Exactly,
        0},
    {"decipher 1 MiB: times its MD5", "decipher", "decipher_md5", Row::AtMost, 3},
    {"headers and signature with debug lines: times the MD5 of 16 headers", "headers_logged",
        "headers_md5", Row::AtMost, 5},
    {"headers and signature without debug lines: times the MD5 of 16 headers", "headers_quiet",
        "headers_md5", Row::AtMost, 4},
    {"headers and signature, debug lines to a file: times the MD5 of 16 headers", "headers_written",
        "headers_md5", Row::NoGoal},
    {"catalogue 100 x 100, debug lines to a file: times the parsing of its JSON",
        "catalogue_logged", "catalogue_parse", Row::AtMost, 2},
    {"catalogue 100 x 100 without debug lines: times the parsing of its JSON", "catalogue_quiet",
        "catalogue_parse", Row::AtMost, 1.2},
    {"catalogue of 30 MB: peak memory, times the reply's size", "catalogue_memory/peak_over_size",
        "", Row::AtMost, 8},
    {"catalogue 100 x 100: bytes a record", "catalogue_quiet/bytes_a_record", "", Row::AtMost, 600},
    {"API post: times a bare access manager", "api_post", "api_bare", Row::AtMost, 1.15},
    {"copy 5,000 x 4 KiB: times a QFile::copy loop", "copy_small", "copy_small_bare", Row::AtMost,
        1.05},
    {"copy 200 x 1 MiB: times a QFile::copy loop", "copy_large", "copy_large_bare", Row::AtMost,
        1.05},
    {"copy a Qt tree of 300 MB: times a QFile::copy loop", "copy_qt", "copy_qt_bare", Row::AtMost,
        1.05},
    {"the QFile::copy loop, 5,000 x 4 KiB: times cp -r", "copy_small_bare", "copy_small_cp",
        Row::NoGoal},
    {"the QFile::copy loop, 200 x 1 MiB: times cp -r", "copy_large_bare", "copy_large_cp",
        Row::NoGoal},
    {"the QFile::copy loop, a Qt tree of 300 MB: times cp -r", "copy_qt_bare", "copy_qt_cp",
        Row::NoGoal},
};
