#!/usr/bin/python3
"""Checks model files against the published JSON Schema of the model file.

Usage: validate-models.py SCHEMA DIR...

Every *.json under the given folders whose top level says "format": "vask-model" is
validated; other JSON files are skipped, and so is everything under a folder named "bad"
(models that are wrong on purpose, for the tests of the loader). One line is printed for
each file, then "N passed, M failed". The exit status is non-zero when a file fails, when a
folder is missing, or when no model file was found at all.
"""

import json
import pathlib
import sys

import jsonschema
import jsonschema.exceptions

FORMAT = "vask-model"


class ModelFileProblem(Exception):
    pass


def refuse_duplicate_keys(pairs):
    # The program refuses a key given twice in one object; plain json.load would keep the
    # last one silently.
    seen = {}
    for key, value in pairs:
        if key in seen:
            raise ModelFileProblem(f'the key "{key}" is given twice in one object')
        seen[key] = value
    return seen


def refuse_non_finite(text):
    raise ModelFileProblem(f"{text} is not a finite number")


def load(path):
    with open(path, encoding="utf-8-sig") as stream:
        return json.load(stream, object_pairs_hook=refuse_duplicate_keys,
                         parse_constant=refuse_non_finite)


def json_path(parts):
    text = ""
    for part in parts:
        if isinstance(part, int):
            text += f"[{part}]"
        else:
            text += ("." if text else "") + str(part)
    return text or "top level"


def main(arguments):
    if len(arguments) < 2:
        print("usage: validate-models.py SCHEMA DIR...", file=sys.stderr)
        return 2
    schema = load(arguments[0])
    validator_class = jsonschema.validators.validator_for(schema)
    validator_class.check_schema(schema)
    validator = validator_class(schema)

    passed = failed = 0
    for folder in map(pathlib.Path, arguments[1:]):
        if not folder.is_dir():
            print(f"FAIL {folder}: not a folder")
            failed += 1
            continue
        for path in sorted(folder.rglob("*.json")):
            if "bad" in path.relative_to(folder).parts[:-1]:
                continue
            try:
                document = load(path)
            except (ValueError, ModelFileProblem) as problem:
                print(f"FAIL {path}: not a readable JSON file: {problem}")
                failed += 1
                continue
            if not isinstance(document, dict) or document.get("format") != FORMAT:
                print(f"skip {path} (not a {FORMAT} file)")
                continue
            errors = list(validator.iter_errors(document))
            if errors:
                first = jsonschema.exceptions.best_match(errors)
                more = f" (and {len(errors) - 1} more)" if len(errors) > 1 else ""
                print(f"FAIL {path}: {json_path(first.absolute_path)}: {first.message}{more}")
                failed += 1
            else:
                print(f"ok   {path}")
                passed += 1

    print(f"{passed} passed, {failed} failed")
    if passed + failed == 0:
        print("no model file was found", file=sys.stderr)
        return 1
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
