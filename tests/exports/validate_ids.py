"""Validates IDS files against buildingSMART's ids.xsd with python3-xmlschema, offline: the W3C
schemas the XSD imports by URL (xml.xsd, XMLSchema.xsd) are the copies xmlschema carries itself,
and allow="local" forbids any fetch from the network.
Usage: validate_ids.py IDS.xsd FILE.ids...; prints each file's first error and exits 1 if any."""
import sys

import xmlschema


def main(argv):
    schema = xmlschema.XMLSchema(argv[1], allow="local")
    failed = 0
    for path in argv[2:]:
        error = next(iter(schema.iter_errors(path)), None)
        if error is not None:
            failed += 1
            print(f"{path}: {error.reason} (at {error.path})")
    print(f"{len(argv) - 2 - failed} valid, {failed} invalid")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
