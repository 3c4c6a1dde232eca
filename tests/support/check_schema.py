#!/usr/bin/env python3
"""Prints for each line of standard input, a JSON document, whether it is valid for the JSON Schema in
the file SCHEMA. Fails when the schema itself is not valid draft-07: check_schema.py SCHEMA"""
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
for line in sys.stdin:
    print("valid" if validator.is_valid(json.loads(line)) else "invalid")
