#!/usr/bin/env python3
"""Turns registries' delegation statistics into the table installer/address_blocks.csv.

Reads the given files ("-" or none: standard input), keeps the IPv4 rows of one country, merges
ranges that overlap or touch, and prints the table. Nothing is downloaded; pass the extended or the
plain statistics of as many registries as wanted:

    tools/refresh-address-blocks.py delegated-apnic-latest delegated-ripencc-latest \
        > installer/address_blocks.csv
"""

import argparse
import fileinput
import ipaddress
import sys

# What a registry lists without having handed it out.
UNUSED = {"available", "reserved"}


def range_of_row(line, country):
    """The range (first, last) of a row `registry|cc|type|start|value|date|status...`, or None."""
    fields = line.strip().split("|")
    if len(fields) < 7 or fields[1].upper() != country or fields[2] != "ipv4":
        return None
    if fields[6] in UNUSED:
        return None
    first = int(ipaddress.IPv4Address(fields[3]))
    last = first + int(fields[4]) - 1
    if not first <= last < 2**32:
        raise ValueError(f"{fields[4]} addresses from {fields[3]}")
    return first, last


def merged(ranges):
    """Sorted, with overlapping and touching ranges joined."""
    result = []
    for first, last in sorted(ranges):
        if result and first <= result[-1][1] + 1:
            result[-1][1] = max(result[-1][1], last)
        else:
            result.append([first, last])
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--country", default="CN", type=str.upper, help="ISO 3166 code, default CN")
    parser.add_argument("files", nargs="*", help="delegation statistics, default standard input")
    options = parser.parse_args()

    found = []
    try:
        with fileinput.input(options.files) as lines:
            for line in lines:
                try:
                    row = range_of_row(line, options.country)
                except ValueError as error:
                    sys.exit(f"{lines.filename()}:{lines.filelineno()}: {error}")
                if row:
                    found.append(row)
    except OSError as error:
        sys.exit(str(error))
    if not found:
        sys.exit(f"no IPv4 range of {options.country} in the input")

    table = merged(found)
    print("first,size_minus_one")
    for first, last in table:
        print(f"{first},{last - first}")
    addresses = sum(last - first + 1 for first, last in table)
    print(f"{len(table)} ranges, {addresses:,} addresses", file=sys.stderr)


if __name__ == "__main__":
    main()
