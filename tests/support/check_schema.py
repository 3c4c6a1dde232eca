#!/usr/bin/env python3
"""Writes to the file VERDICTS for each line of the file DOCUMENTS, a JSON document, whether it is valid
for the JSON Schema in the file SCHEMA. Fails without a file when the schema itself is not valid
draft-07. With "double", integers are rounded as editors round them:
check_schema.py SCHEMA DOCUMENTS int|double VERDICTS"""
import json
import os
import sys

import jsonschema

integer = float if sys.argv[3] == "double" else int
with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file, parse_int=integer)
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
with open(sys.argv[2], encoding="utf-8") as file, open("incomplete", "w") as verdicts:
    for line in file:
        isValid = validator.is_valid(json.loads(line, parse_int=integer))
        print("valid" if isValid else "invalid", file=verdicts)
os.rename("incomplete", sys.argv[4])
