"""natvis.py FILE: writes a C++ source in which each expression of the debugger's views stands, in a
class derived from the type that it is for. It compiles if all the types and members exist.

The views of the standard library's own types (std::...) are left out: their members are those of
another library than the one that compiles this.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree

# Elements whose whole text is an expression; in others, expressions stand in braces.
WHOLE = {"Item", "Size", "ValueNode", "ExpandedItem"}


def expressions(element):
    tag = element.tag.split("}")[-1]
    text = element.text or ""
    if "Condition" in element.attrib:
        yield element.attrib["Condition"]
    if tag in WHOLE:
        yield text
    elif tag == "DisplayString":
        yield from re.findall(r"{([^{}]+)}", text)
    for child in element:
        yield from expressions(child)


def main():
    space = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
    print('#include "QkDlg/QkFlatBtn.h"\n#include "QkDlg/QkXDlg.h"')
    # The members of std::array have other names in this library.
    print("#define _Elems _M_elems\n#define $i 0")
    count = 0
    for number, view in enumerate(ElementTree.parse(sys.argv[1]).getroot().iter(space + "Type")):
        name = view.attrib["Name"]
        if name.startswith("std::"):
            continue
        found = [re.sub(r",[!a-z0-9]+$", "", each.strip()) for each in expressions(view)]
        if not found:
            sys.exit(f"natvis: the view of {name} shows nothing")
        count += len(found)
        print(f"struct View{number} : {name} {{")
        print("    void show() {")
        for each in found:
            print(f"        (void)({each});")
        print("    }\n};")
    if count < 20:
        sys.exit(f"natvis: only {count} expressions were found")


if __name__ == "__main__":
    main()
