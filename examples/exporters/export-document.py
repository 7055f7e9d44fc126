"""Writes the metamodel of an invented platform as a document for upgradesrv.

    python3 export-document.py CATALOGUE.db METAMODEL.json

CATALOGUE.db is an SQLite database with the tables of catalogue.sql. With another module than sqlite3 the same statements
read another database. Python's own library is all that it needs.
"""

import json
import sqlite3
import sys

TYPES = {"TXT": "string", "INT": "int32", "DEC": "float64", "DAY": "date", "REF": "lookup"}


def rows(database, statement, *parameters):
    """The rows that a statement gives, without what the platform does not say: that may be left out of a document."""
    for row in database.execute(statement, parameters):
        yield {key: row[key] for key in row.keys() if row[key] is not None}


def properties(database, type_id):
    for row in rows(
        database,
        """SELECT f.name AS internal_name, f.label AS display_name, f.storage AS field, f.datatype AS type,
                  f.size AS length, f.initial AS default_value, f.decimals AS precision, f.highest AS max,
                  f.lowest AS min, target.name AS lookup_internal_name
           FROM cat_field f LEFT JOIN cat_type target ON target.id = f.target_id
           WHERE f.type_id = ? ORDER BY f.position""",
        type_id,
    ):
        # A type that is not known here keeps its name, so that a difference in it shows.
        row["type"] = TYPES.get(row["type"], row["type"])
        yield row


def elements(database, kind):
    """Classes and links."""
    for row in rows(
        database,
        """SELECT name AS internal_name, label AS display_name, id AS class_id, storage AS table_name
           FROM cat_type WHERE kind = ? ORDER BY id""",
        kind,
    ):
        aspects = rows(
            database,
            """SELECT aspect.name FROM cat_aspect a JOIN cat_type aspect ON aspect.id = a.aspect_id
               WHERE a.type_id = ? ORDER BY a.position""",
            row["class_id"],
        )
        row["behaviors"] = [aspect["name"] for aspect in aspects]
        row["properties"] = list(properties(database, row["class_id"]))
        yield row


def behaviors(database):
    for row in rows(
        database,
        "SELECT id, name AS internal_name, label AS display_name FROM cat_type WHERE kind = 'A' ORDER BY id",
    ):
        number = row.pop("id")
        row["methods"] = list(
            rows(
                database,
                """SELECT name AS internal_name, label AS display_name FROM cat_action
                   WHERE aspect_id = ? ORDER BY position""",
                number,
            )
        )
        row["properties"] = list(properties(database, number))
        yield row


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source, target = sys.argv[1:]
    database = sqlite3.connect("file:" + source + "?mode=ro", uri=True)
    database.row_factory = sqlite3.Row
    # One transaction, so that everything is read as of one moment.
    database.execute("BEGIN")
    metamodel = {
        "generation": 2024,
        "classes": list(elements(database, "O")),
        "links": list(elements(database, "R")),
        "behaviors": list(behaviors(database)),
    }
    with open(target, "x", encoding="utf-8") as file:
        json.dump(metamodel, file, ensure_ascii=False, indent=2)
        file.write("\n")


main()
