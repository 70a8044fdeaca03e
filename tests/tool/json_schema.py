# SPDX-License-Identifier: MIT
"""Checks JSON documents against the part of JSON Schema that the project's schemas use.

Any other keyword is refused, so that a schema cannot ask for something that is never checked.
"""

TYPES = {
    "object": lambda value: isinstance(value, dict),
    "array": lambda value: isinstance(value, list),
    "string": lambda value: isinstance(value, str),
    "boolean": lambda value: isinstance(value, bool),
    "integer": lambda value: isinstance(value, int) and not isinstance(value, bool),
    "null": lambda value: value is None,
}
ANNOTATIONS = {"$schema", "$id", "$defs", "title", "description"}


class Checker:
    def __init__(self, schema):
        self.root = schema
        self.rules = {
            "type": self.check_type, "const": self.check_const, "enum": self.check_enum,
            "minimum": self.check_minimum, "required": self.check_required,
            "properties": self.check_properties, "items": self.check_items,
            "additionalProperties": self.check_others, "anyOf": self.check_any, "$ref": self.check_ref,
        }

    def faults(self, value, schema=None, where="$"):
        """What is wrong with the value, as texts; empty when nothing is."""
        schema = self.root if schema is None else schema
        found = []
        for keyword, argument in schema.items():
            if keyword in ANNOTATIONS:
                continue
            if keyword not in self.rules:
                raise ValueError(f"the keyword {keyword} is not known")
            found += self.rules[keyword](value, argument, schema, where)
        return found

    def check_type(self, value, types, _schema, where):
        types = [types] if isinstance(types, str) else types
        return [] if any(TYPES[one](value) for one in types) else [f"{where} is no {types}"]

    def check_const(self, value, wanted, _schema, where):
        return [] if value == wanted else [f"{where} is not {wanted!r}"]

    def check_enum(self, value, wanted, _schema, where):
        return [] if value in wanted else [f"{where} is none of {wanted}"]

    def check_minimum(self, value, least, _schema, where):
        return [f"{where} is below {least}"] if isinstance(value, int) and value < least else []

    def check_required(self, value, names, _schema, where):
        if not isinstance(value, dict):
            return []
        return [f"{where} lacks {name}" for name in names if name not in value]

    def check_properties(self, value, properties, _schema, where):
        if not isinstance(value, dict):
            return []
        return [fault for name, schema in properties.items() if name in value
                for fault in self.faults(value[name], schema, f"{where}.{name}")]

    def check_others(self, value, rule, schema, where):
        if not isinstance(value, dict):
            return []
        others = [name for name in value if name not in schema.get("properties", {})]
        if rule is False:
            return [f"{where} has the unknown {name}" for name in others]
        return [fault for name in others
                for fault in self.faults(value[name], rule, f"{where}.{name}")]

    def check_items(self, value, rule, _schema, where):
        if not isinstance(value, list):
            return []
        return [fault for i, item in enumerate(value)
                for fault in self.faults(item, rule, f"{where}[{i}]")]

    def check_any(self, value, choices, _schema, where):
        faults = [self.faults(value, choice, where) for choice in choices]
        return [] if [] in faults else [f"{where} fits nothing: {faults}"]

    def check_ref(self, value, target, _schema, where):
        schema = self.root
        for step in target.removeprefix("#/").split("/"):
            schema = schema[step]
        return self.faults(value, schema, where)
