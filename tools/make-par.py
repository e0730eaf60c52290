#!/usr/bin/env python3
"""Writes the binary .par twin of a configuration tree in its XML form.

    tools/make-par.py res/CamCfg.xml res/CamCfg.par

The .par form: top nodes one behind the other, no header. A node is a 32-bit
name length, the name, a 32-bit child count, a 32-bit property count, the
properties, then the children. A property is a 32-bit name length, the name, a
32-bit type and the value: bool one byte, texts a 32-bit length and the bytes,
numbers of types 4 to 10 one double, vectors and matrices their doubles row by
row. All little-endian.
"""
import struct
import sys
import xml.etree.ElementTree as ET

TYPES = {
    "bool": 1, "char": 2, "unsigned char": 3, "short": 4, "unsigned short": 5,
    "int": 6, "unsigned int": 7, "long": 8, "unsigned long": 9, "float": 10,
    "vector2": 11, "vector3": 12, "vector4": 13,
    "matrix2X2": 14, "matrix3X3": 15, "matrix4X4": 16, "string": 17,
}


def text(value):
    data = value.encode("utf-8")
    return struct.pack("<i", len(data)) + data


def property_bytes(element):
    kind = TYPES[element.get("type")]
    out = text(element.get("name", "")) + struct.pack("<i", kind)
    if kind == 1:
        flag = element.get("value")
        if flag not in ("true", "false"):
            sys.exit(f"make-par: bool {element.get('name')} must be true or false")
        out += bytes([flag == "true"])
    elif kind in (2, 3, 17):
        out += text(element.get("value", ""))
    elif kind <= 9:
        out += struct.pack("<d", int(element.get("value", "0")))
    elif kind == 10:
        out += struct.pack("<d", float(element.get("value", "0")))
    elif kind <= 13:
        count = kind - 9
        out += b"".join(struct.pack("<d", float(element.get(f"v{i}", "0"))) for i in range(count))
    else:
        side = kind - 12
        out += b"".join(struct.pack("<d", float(element.get(f"v{r}{c}", "0")))
                        for r in range(side) for c in range(side))
    return out


def node_bytes(element):
    properties = []
    children = []
    for child in element:
        kind = child.get("nodeType")
        if kind == "nodeProperty":
            properties.extend(property_bytes(p) for p in child)
        elif kind == "childNode":
            children.append(node_bytes(child))
    return (text(element.get("name", "")) + struct.pack("<ii", len(children), len(properties))
            + b"".join(properties) + b"".join(children))


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    root = ET.parse(sys.argv[1]).getroot()
    with open(sys.argv[2], "wb") as out:
        for node in root:
            if node.get("nodeType") == "childNode":
                out.write(node_bytes(node))


if __name__ == "__main__":
    main()
