"""The exported interface as a text, one fact a line, and what differs between two such texts.

usage: interface.py list OBJECT HEADER-FOLDERS     facts of an object file, see script/interface
       interface.py compare KEPT NEW VERSION       exit code 0: equal, 1: not; the last line says what
                                                   to do, "step" when the version allows the change

A fact is "KIND NAME: VALUE". A name that goes and a value that changes need a major step of the
version, a name that comes a minor one; for what is required of the host it is the other way round.
"""
import os
import sys


def attribute(die, name):
    found = die.attributes.get("DW_AT_" + name)
    return found.value if found else None


def name_of(die):
    value = attribute(die, "name")
    return value.decode() if value else "(unnamed)"


def type_of(die):
    return die.get_DIE_from_attribute("DW_AT_type") if "DW_AT_type" in die.attributes else None


def length_of(array):
    for child in array.iter_children():
        bound = attribute(child, "upper_bound")
        count = attribute(child, "count")
        return count if count is not None else 0 if bound is None else bound + 1
    return 0


def declaration(die, inner=""):
    """The type as C writes it, around `inner`: a name, a star, parameters."""
    spaced = " " + inner if inner and inner[0] != "[" else inner
    if die is None:
        return "void" + spaced
    tag = die.tag.removeprefix("DW_TAG_")
    if tag == "pointer_type":
        target = type_of(die)
        compound = target is not None and target.tag in ("DW_TAG_subroutine_type", "DW_TAG_array_type")
        return declaration(target, f"(*{inner})" if compound else "*" + inner)
    if tag in ("const_type", "volatile_type"):
        word = tag.removesuffix("_type")
        target = type_of(die)
        if target is not None and target.tag == "DW_TAG_pointer_type":
            return declaration(target, f" {word}{spaced}".rstrip())
        return word + " " + declaration(target, inner)
    if tag == "array_type":
        return declaration(type_of(die), f"{inner}[{length_of(die)}]")
    if tag == "subroutine_type":
        parameters = [
            "..." if child.tag == "DW_TAG_unspecified_parameters" else declaration(type_of(child))
            for child in die.iter_children()
            if child.tag in ("DW_TAG_formal_parameter", "DW_TAG_unspecified_parameters")
        ]
        return declaration(type_of(die), f"{inner}({', '.join(parameters) or 'void'})")
    prefix = {"structure_type": "struct ", "union_type": "union ", "enumeration_type": "enum "}
    return prefix.get(tag, "") + name_of(die) + spaced


def record_facts(name, die):
    yield f"record {name}", f"{attribute(die, 'byte_size')} bytes"
    for member in die.iter_children():
        if member.tag == "DW_TAG_member":
            field = declaration(type_of(member))
            yield f"field {name}.{name_of(member)}", f"{field} at {attribute(member, 'data_member_location') or 0}"


def facts_of(die):
    """What an entry on the top level of the object's debug information says."""
    name = name_of(die)
    if die.tag == "DW_TAG_typedef":
        target = type_of(die)
        if target is not None and target.tag == "DW_TAG_structure_type":
            yield from record_facts(name, target)
        elif target is None or target.tag != "DW_TAG_enumeration_type":
            yield f"type {name}", declaration(target)
    elif die.tag == "DW_TAG_enumeration_type":
        for constant in die.iter_children():
            yield f"constant {name_of(constant)}", f"{attribute(constant, 'const_value'):#x}"
    elif die.tag == "DW_TAG_variable":
        # The object has a pointer exported_X or required_X to every function or variable X.
        kind, _, target = name.partition("_")
        if kind in ("exported", "required"):
            constant_pointer = type_of(die)
            yield f"{kind} {target}", declaration(type_of(type_of(constant_pointer)), target)


def list_interface(file, folders):
    from elftools.elf.elffile import ELFFile

    folders = {os.path.abspath(folder) for folder in folders}
    facts = {}
    with open(file, "rb") as stream:
        dwarf = ELFFile(stream).get_dwarf_info()
        for unit in dwarf.iter_CUs():
            top = unit.get_top_DIE()
            header = dwarf.line_program_for_CU(unit).header
            roots = [attribute(top, "comp_dir").decode()]
            roots += [os.path.join(roots[0], path.decode()) for path in header["include_directory"]]
            ours = [False]
            for entry in header["file_entry"]:
                ours.append(os.path.normpath(roots[entry.dir_index]) in folders)
            for die in top.iter_children():
                if die.tag == "DW_TAG_variable" or ours[attribute(die, "decl_file") or 0]:
                    facts.update(facts_of(die))
    for key in sorted(facts):
        print(f"{key}: {facts[key]}")


def read_facts(file):
    """The version on the first line, and the facts."""
    with open(file, encoding="ascii") as stream:
        lines = stream.read().splitlines()
    return lines[0].removeprefix("version "), dict(line.split(": ", 1) for line in lines[1:])


def compare(kept_file, new_file, version):
    kept_version, kept = read_facts(kept_file)
    _, new = read_facts(new_file)
    gone = [key for key in kept if key not in new]
    come = [key for key in new if key not in kept]
    changed = [key for key in kept if key in new and kept[key] != new[key]]
    for key in gone:
        print(f"gone: {key}: {kept[key]}")
    for key in changed:
        print(f"changed: {key}: {kept[key]} -> {new[key]}")
    for key in come:
        print(f"new: {key}: {new[key]}")
    if not gone and not come and not changed:
        return 0
    required = [key for key in come + gone if key.startswith("required ")]
    breaks = (
        any(key not in required for key in gone)
        or bool(changed)
        or any(key in required for key in come)
    )
    major, minor = (int(part) for part in kept_version.split(".")[:2])
    needed = (major + 1, 0) if breaks else (major, minor + 1)
    if tuple(int(part) for part in version.split(".")[:2]) >= needed:
        print("step")
    else:
        print(
            f"callers built with {kept_version} "
            + ("no longer work: " if breaks else "go on to work, new ones need the new one: ")
            + f"undo this, or make the version {needed[0]}.{needed[1]}.0 in CMakeLists.txt and run"
            " script/interface --update"
        )
    return 1


if __name__ == "__main__":
    if sys.argv[1] == "list":
        list_interface(sys.argv[2], sys.argv[3:])
    else:
        sys.exit(compare(*sys.argv[2:5]))
