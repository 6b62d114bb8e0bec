#!/usr/bin/python3
"""Checks with ezdxf a drawing that veltor wrote Object Data into.

Usage: check_written.py EXPECTATIONS.json

The JSON (written by the oracle tests) names the file we wrote ("ours"), the Object Data it
must hold (the table catalogue in order; the records of some entities, value by value; record
counts per table) and, in "corpus" mode, the file we read ("original"). Checks:
  - ezdxf reads our file, and its audit finds no more errors than in the original (no errors
    at all for a generated drawing);
  - the catalogue dictionary under the root dictionary key VELTOR_OBJECT_DATA holds exactly the
    expected tables, each under the key "T" + its handle;
  - each listed entity's extension dictionary holds an XRECORD under VELTOR_OBJECT_DATA with
    exactly the expected records and values; in corpus mode, no other entity has one;
  - in corpus mode, every entity and object of the original is unchanged in ours (a dump of
    its DXF attributes, xdata, dictionary entries and XRECORD tags), apart from the root
    dictionary and the extension dictionaries that gained our key.
Prints one line per problem and "OK ..." at the end; exits 0 when all checks pass, 1 when
one fails, 2 when the check itself could not run.
"""
import json
import math
import re
import sys

import ezdxf
from ezdxf import recover
from ezdxf.lldxf.const import DXFStructureError, DXFValueError

KEY = "VELTOR_OBJECT_DATA"
UNICODE_ESCAPE = re.compile(r"\\U\+([0-9A-Fa-f]{4})")

problems = []


def problem(text):
    problems.append(text)
    print("FAIL: " + text)


def load(path, use_recover):
    """Returns (doc, used_recover). Files strict loading rejects are read in recover mode."""
    if not use_recover:
        try:
            return ezdxf.readfile(path), False
        except (DXFStructureError, DXFValueError):
            pass
    doc, _ = recover.readfile(path)
    return doc, True


def audit_errors(doc):
    """Number of errors ezdxf's audit reports, or None when the auditor itself fails."""
    try:
        return len(doc.audit().errors)
    except Exception as e:  # ezdxf 0.18's auditor raises on some odd files
        print("note: ezdxf audit raised %s: %s" % (type(e).__name__, e))
        return None


def text_of(value, escapes):
    """A text value as Python text: before R2007 characters outside the code page are
    written as \\U+XXXX escapes, which ezdxf leaves as they are."""
    if escapes:
        return UNICODE_ESCAPE.sub(lambda m: chr(int(m.group(1), 16)), value)
    return value


# Groups that continue a text, and what comes before their piece.
CONTINUATIONS = {3: "", 300: "\n", 301: "\r\n", 302: "\r"}


def read_text(tags, i, escapes):
    """Reads a text at tags[i] with its continuation groups; returns (text, next index)."""
    text = tags[i].value
    i += 1
    while i < len(tags) and tags[i].code in CONTINUATIONS:
        text += CONTINUATIONS[tags[i].code] + tags[i].value
        i += 1
    return text_of(text, escapes), i


def read_value(tags, i, escapes):
    """Reads one Object Data value at tags[i]; returns ([type, value], next index)."""
    code, value = tags[i].code, tags[i].value
    if code == 90:
        return [1, int(value)], i + 1
    if code == 40:
        return [2, float(value)], i + 1
    if code == 1:
        text, i = read_text(tags, i, escapes)
        return [3, text], i
    if code == 10:
        if isinstance(value, (tuple, list)) or hasattr(value, "__len__"):
            coords = list(value) + [0.0] * (3 - len(value))
            return [4, [float(c) for c in coords[:3]]], i + 1
        if i + 2 < len(tags) and tags[i + 1].code == 20 and tags[i + 2].code == 30:
            return [4, [float(value), float(tags[i + 1].value), float(tags[i + 2].value)]], i + 3
    raise ValueError("group %d (%r) does not start a value" % (code, value))


def same_value(got, want):
    if got[0] != want[0]:
        return False
    if want[0] == 2:
        return got[1] == float(want[1]) or (math.isnan(got[1]) and math.isnan(float(want[1])))
    if want[0] == 4:
        return [float(c) for c in got[1]] == [float(c) for c in want[1]]
    return got[1] == want[1]


def xrecord_tags(xrec):
    return list(xrec.tags)


def read_catalogue(doc, escapes):
    """[(handle, key, table dict)] in catalogue order, or None without a catalogue."""
    if KEY not in doc.rootdict:
        return None
    catalogue = doc.rootdict[KEY]
    tables = []
    for key in catalogue.keys():
        xrec = catalogue[key]
        tags = xrecord_tags(xrec)
        where = "table definition %s (key %s)" % (xrec.dxf.handle, key)
        if len(tags) < 4 or tags[0] != (1, "VELTOR_OD_TABLE") or tags[1] != (70, 1):
            problem(where + ": does not start with 1 VELTOR_OD_TABLE, 70 1: %r" % tags[:4])
            continue
        if tags[3].code != 4:
            problem(where + ": the table name is not followed by a description (group 4)")
            continue
        description, i = read_text(tags, 3, escapes)
        table = {"name": text_of(tags[2].value, escapes), "description": description,
                 "columns": []}
        try:
            while i < len(tags):
                if tags[i].code != 2 or tags[i + 1].code != 4:
                    raise ValueError("column %d does not start with groups 2, 4"
                                     % len(table["columns"]))
                name = text_of(tags[i].value, escapes)
                description, i = read_text(tags, i + 1, escapes)
                if tags[i].code != 70:
                    raise ValueError("column %r has no type (group 70)" % name)
                column = {"name": name, "description": description, "type": int(tags[i].value)}
                column["default"], i = read_value(tags, i + 1, escapes)
                table["columns"].append(column)
        except (ValueError, IndexError) as e:
            problem(where + ": " + str(e))
        tables.append((xrec.dxf.handle, key, table))
    return tables


def read_records(doc, entity, table_names, escapes):
    """The entity's records as [{"table", "values"}], or None without our XRECORD."""
    if not entity.has_extension_dict:
        return None
    xdict = entity.get_extension_dict()
    if KEY not in xdict:
        return None
    tags = xrecord_tags(xdict[KEY])
    where = "records of entity %s" % entity.dxf.handle
    if len(tags) < 2 or tags[0] != (1, "VELTOR_OD_RECORDS") or tags[1] != (70, 1):
        problem(where + ": do not start with 1 VELTOR_OD_RECORDS, 70 1: %r" % tags[:2])
        return []
    records = []
    i = 2
    try:
        while i < len(tags):
            if tags[i].code != 340:
                raise ValueError("expected group 340 at data tag %d, found %d" % (i, tags[i].code))
            handle = tags[i].value.upper()
            if handle not in table_names:
                raise ValueError("group 340 points to %s, which is no table definition" % handle)
            record = {"table": table_names[handle], "values": []}
            i += 1
            while i < len(tags) and tags[i].code != 340:
                value, i = read_value(tags, i, escapes)
                record["values"].append(value)
            records.append(record)
    except (ValueError, IndexError) as e:
        problem(where + ": " + str(e))
    return records


def check_object_data(doc, expected, escapes, only_listed):
    catalogue = read_catalogue(doc, escapes)
    if catalogue is None:
        problem("the root dictionary has no %s entry" % KEY)
        return
    for handle, key, _ in catalogue:
        if key.upper() != "T" + handle.upper():
            problem("table definition %s is stored under key %r, not T%s" % (handle, key, handle))
    got_tables = [t for _, _, t in catalogue]
    if [t["name"] for t in got_tables] != [t["name"] for t in expected["tables"]]:
        problem("tables %r, expected %r" % ([t["name"] for t in got_tables],
                                            [t["name"] for t in expected["tables"]]))
    for got, want in zip(got_tables, expected["tables"]):
        same = (got["name"] == want["name"] and got["description"] == want["description"]
                and len(got["columns"]) == len(want["columns"]))
        for gc, wc in zip(got["columns"], want["columns"]):
            same = same and gc["name"] == wc["name"] and gc["description"] == wc["description"] \
                and gc["type"] == wc["type"] and same_value(gc["default"], wc["default"])
        if not same:
            problem("table %r reads %r, expected %r" % (want["name"], got, want))
    table_names = {h.upper(): t["name"] for h, _, t in catalogue}

    listed = set()
    for item in expected["entities"]:
        handle = item["handle"].upper()
        listed.add(handle)
        entity = doc.entitydb.get(handle)
        if entity is None:
            problem("entity %s is missing" % handle)
            continue
        records = read_records(doc, entity, table_names, escapes)
        if records is None:
            problem("entity %s (%s) has no %s XRECORD in its extension dictionary"
                    % (handle, entity.dxftype(), KEY))
            continue
        ok = len(records) == len(item["records"])
        for got, want in zip(records, item["records"]):
            ok = ok and got["table"] == want["table"] and len(got["values"]) == len(want["values"])
            ok = ok and all(same_value(g, w) for g, w in zip(got["values"], want["values"]))
        if not ok:
            problem("entity %s (%s) has records %r, expected %r"
                    % (handle, entity.dxftype(), records, item["records"]))

    counts = {}
    for handle, entity in doc.entitydb.items():
        if not hasattr(entity, "has_extension_dict") or not entity.is_alive:
            continue
        records = read_records(doc, entity, table_names, escapes)
        if records is None:
            continue
        if only_listed and handle.upper() not in listed:
            problem("entity %s (%s) has Object Data we did not write" % (handle, entity.dxftype()))
        for record in records:
            counts[record["table"]] = counts.get(record["table"], 0) + 1
    if expected.get("record_counts") and counts != expected["record_counts"]:
        problem("records per table %r, expected %r" % (counts, expected["record_counts"]))
    return counts


def handle_seed(doc):
    try:
        return int(doc.header.get("$HANDSEED", "0") or "0", 16)
    except ValueError:
        return 0


def created_by_ezdxf(doc, seed, value):
    """A handle of an object that ezdxf made at load because the file lacked it (a MATERIAL,
    a LAYOUT, ...): such objects take handles from $HANDSEED on, which is higher in ours, so
    references to them are compared by type only."""
    if not isinstance(value, str) or not seed:
        return None
    try:
        number = int(value, 16)
    except ValueError:
        return None
    target = doc.entitydb.get(value)
    if number >= seed and target is not None:
        return "<object made by ezdxf: %s>" % target.dxftype()
    return None


def dump(doc, seed, entity):
    """What must not change in an object we did not touch, as comparable text."""
    def shown(value):
        created = created_by_ezdxf(doc, seed, value)
        return created if created else repr(value)

    parts = [entity.dxftype()]
    attribs = entity.dxf.all_existing_dxf_attribs()
    for name in sorted(attribs):
        parts.append("%s=%s" % (name, shown(attribs[name])))
    xdata = getattr(entity, "xdata", None)
    if xdata:
        for appid in sorted(xdata.data):
            parts.append("xdata %s: %r" % (appid, [(t.code, t.value) for t in xdata.data[appid]]))
    if entity.dxftype() == "DICTIONARY":
        entries = []
        for key in entity.keys():
            value = entity.get(key)
            handle = value.dxf.handle if hasattr(value, "dxf") else str(value)
            entries.append((key, shown(handle)))
        parts.append("entries %r" % sorted(entries))
    if entity.dxftype() == "XRECORD":
        parts.append("tags %r" % [(t.code, t.value) for t in entity.tags])
    xdict = getattr(entity, "extension_dict", None) if entity.has_extension_dict else None
    if xdict is not None:
        parts.append("xdict %s" % xdict.dictionary.dxf.handle)
    return parts


def check_unchanged(original, ours, touched):
    """Every object of the original (that the file held) is in ours, unchanged."""
    seed, our_seed = handle_seed(original), handle_seed(ours)
    skip = {original.rootdict.dxf.handle.upper()}
    for handle in touched:
        entity = original.entitydb.get(handle)
        if entity is not None and entity.has_extension_dict:
            skip.add(entity.get_extension_dict().dictionary.dxf.handle.upper())
    compared = 0
    for handle, entity in original.entitydb.items():
        if not entity.is_alive or handle.upper() in skip:
            continue
        # ezdxf creates objects a file lacks, with handles from $HANDSEED on; ours has a
        # higher $HANDSEED, so those are not comparable.
        if seed and int(handle, 16) >= seed:
            continue
        theirs = ours.entitydb.get(handle)
        if theirs is None:
            problem("%s %s of the original is missing" % (entity.dxftype(), handle))
            continue
        a, b = dump(original, seed, entity), dump(ours, our_seed, theirs)
        if handle.upper() in touched:  # it gained an extension dictionary, nothing else
            a = [p for p in a if not p.startswith("xdict ")]
            b = [p for p in b if not p.startswith("xdict ")]
        if a != b:
            diff = [(x, y) for x, y in zip(a, b) if x != y][:3]
            problem("%s %s changed: %r (lengths %d, %d)" % (entity.dxftype(), handle, diff,
                                                           len(a), len(b)))
        compared += 1
    for handle in touched:
        before, after = original.entitydb.get(handle), ours.entitydb.get(handle)
        if before is None or after is None or not after.has_extension_dict:
            continue
        keys_before = set(before.get_extension_dict().keys()) if before.has_extension_dict else set()
        keys_after = set(after.get_extension_dict().keys())
        if keys_after != keys_before | {KEY}:
            problem("extension dictionary of %s has keys %r, expected %r"
                    % (handle, sorted(keys_after), sorted(keys_before | {KEY})))
    return compared


def main():
    if len(sys.argv) != 2:
        print(__doc__)
        return 2
    with open(sys.argv[1], encoding="utf-8") as f:
        expected = json.load(f)
    escapes = expected["version"] < "AC1021"
    corpus = expected["mode"] == "corpus"

    ours, ours_recover = load(expected["ours"], False)
    original = None
    if corpus:
        original, original_recover = load(expected["original"], False)
        if ours_recover and not original_recover:
            problem("ezdxf reads the original strictly but ours only in recover mode")
        if original_recover and not ours_recover:
            ours, _ = load(expected["ours"], True)  # load both the same way

    counts = check_object_data(ours, expected, escapes, only_listed=corpus)
    compared = 0
    if corpus:
        touched = {e["handle"].upper() for e in expected["entities"]}
        compared = check_unchanged(original, ours, touched)

    # Audit last: it repairs the documents it checks.
    ours_errors = audit_errors(ours)
    if corpus:
        original_errors = audit_errors(original)
        if ours_errors is None and original_errors is not None:
            problem("ezdxf's audit fails on ours but not on the original")
        elif ours_errors is not None and original_errors is not None and ours_errors > original_errors:
            problem("ezdxf audit: %d errors in ours, %d in the original" % (ours_errors, original_errors))
        summary = "audit errors %s (original %s), %d objects compared" % (
            ours_errors, original_errors, compared)
    else:
        if ours_errors != 0:
            problem("ezdxf audit: %s errors" % ours_errors)
        summary = "audit errors %s" % ours_errors
    if problems:
        print("%d problem(s) in %s" % (len(problems), expected["ours"]))
        return 1
    print("OK %s: %d tables, %d entities checked value by value, records per table %r; %s" % (
        expected["ours"], len(expected["tables"]), len(expected["entities"]), counts, summary))
    return 0


if __name__ == "__main__":
    sys.exit(main())
