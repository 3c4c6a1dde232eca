#!/usr/bin/env python3
"""Prints for each line of the file DOCUMENTS, a JSON document, whether it is valid for the JSON Schema
in the file SCHEMA. Fails when the schema itself is not valid draft-07. With "double", integers are
rounded as editors round them: check_schema.py SCHEMA DOCUMENTS int|double"""
import json
import sys

import jsonschema

integer = float if sys.argv[3] == "double" else int
with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file, parse_int=integer)
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
with open(sys.argv[2], encoding="utf-8") as file:
    for line in file:
        print("valid" if validator.is_valid(json.loads(line, parse_int=integer)) else "invalid")
