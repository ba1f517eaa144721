# SPDX-License-Identifier: MIT
"""The package has all that the headers declare, as the register of the ABI has it."""
import importlib
import inspect
import pathlib
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

import pytest
import swctl
from swctl import c, records
from swctl._names import NAMES

SOURCE = pathlib.Path(os.environ["SWCTL_PYTHON_SOURCE"])
REGISTER = ElementTree.parse(SOURCE / "abi/libswctl.so.1-x86-64.xml").getroot()
MODULES = [importlib.import_module(f"swctl.{name}") for name in
           ("field", "frame", "kmsg", "l2", "mcast", "mirror_trunk", "platform", "port", "qos", "sdk",
            "stp", "vlan", "vchip.controls")]
TYPED = {re.findall(r"\bC: `(\w+)\(", function.__doc__)[-1]: function
         for module in MODULES for function in vars(module).values()
         if inspect.isfunction(function) and function.__module__ == module.__name__}
# Text with conversions of printf, and what Board is made of.
NOT_TYPED = {"Log_logging_func", *(name for name in NAMES["functions"] if name.startswith("swprobe_"))}
# The register has these under the name of a function with the same code.
SAME_AS = {"user_port_link_medium_get": "user_port_media_type_get", "User_mcast_port_remove": "User_mcast_port_add"}
TYPES = {each.get("id"): each for each in REGISTER.iter() if each.get("id")}


def registered(kind):
    return {each.get("name") for each in REGISTER.find(f"elf-{kind}-symbols")}


def test_every_function_of_the_library_is_there():
    functions = registered("function")
    assert len(functions) > 400
    assert functions <= NAMES["functions"]
    assert functions <= set(TYPED)


def test_every_declared_function_has_a_typed_one_with_its_text():
    assert set(TYPED) == NAMES["functions"] - NOT_TYPED
    for name, function in TYPED.items():
        assert len(function.__doc__.splitlines()[0]) > 5, name


def test_every_variable_is_there():
    assert NAMES["variables"] == registered("variable")
    for name in NAMES["variables"]:
        assert hasattr(c.variables(), name)
    c.variables().ONU_ERR_CODE = 7
    assert c.variables().ONU_ERR_CODE == 7
    c.variables().ONU_ERR_CODE = 0


def plain_type(kind):
    """The C words of a type of the register, and how often it is pointed to."""
    element, pointers, count = TYPES[kind], 0, 1
    while element.tag != "class-decl" and element.tag != "type-decl":
        if element.tag == "pointer-type-def":
            pointers += 1
        elif element.tag == "array-type-def":
            count *= int(element.find("subrange").get("length"))
        elif element.tag not in ("typedef-decl", "qualified-type-def"):
            return element.tag, pointers, count
        element = TYPES[element.get("type-id")]
    return element.get("name"), pointers, count


def registered_records():
    return [each for each in REGISTER.iter("class-decl")
            if each.get("size-in-bits") and not each.get("name", "_").startswith("_")]


def test_records_have_the_sizes_and_offsets_of_the_register():
    checked = 0
    for each in registered_records():
        name = each.get("name")
        struct = c.ffi.typeof(f"struct {name}")
        assert c.ffi.sizeof(struct) * 8 == int(each.get("size-in-bits")), name
        members = {one.find("var-decl").get("name"): int(one.get("layout-offset-in-bits"))
                   for one in each.findall("data-member")}
        assert {field: 8 * found.offset for field, found in struct.fields} == members, name
        checked += 1
    assert checked >= 10


WIDTHS = {"char": 1, "unsigned char": 1, "signed char": 1, "short int": 2, "unsigned short int": 2, "short unsigned int": 2,
          "int": 4, "unsigned int": 4, "void": 0, "long unsigned int": 8, "unsigned long int": 8, "long int": 8}


def shape_of_register(kind):
    name, pointers, _ = plain_type(kind)
    if pointers or name == "function-type":
        return "address"
    return WIDTHS.get(name, name)


def shape_of_cffi(kind):
    if kind.kind in ("pointer", "array", "function"):
        return "address"
    if kind.kind == "struct":
        return kind.cname.removeprefix("struct ")
    return 0 if kind.kind == "void" else c.ffi.sizeof(kind)


def test_functions_have_the_arguments_of_the_register():
    checked = set()
    for each in REGISTER.iter("function-decl"):
        name = each.get("name")
        if name not in NAMES["functions"]:
            continue
        found = c.ffi.typeof(getattr(c, name))
        fixed = [one for one in each.findall("parameter") if not one.get("is-variadic")]
        assert [shape_of_cffi(one) for one in found.args] == [
            shape_of_register(one.get("type-id")) for one in fixed], name
        assert shape_of_cffi(found.result) == shape_of_register(each.find("return").get("type-id")), name
        assert found.ellipsis == (len(fixed) != len(each.findall("parameter"))), name
        checked.add(name)
    assert registered("function") - checked == set(SAME_AS)
    for name, other in SAME_AS.items():
        assert c.ffi.typeof(getattr(c, name)) == c.ffi.typeof(getattr(c, other))


HEADERS = ["swctl/swctl.h", "swctl/platform/adapter.h", "swctl/platform/sdk.h", "swctl/platform/read.h",
           "swctl-vchip/vchip.h", "swctl-vchip/ability.h", "swctl-vchip/frame.h", "swctl-vchip/document.h",
           "swctl-probe/process.h", "swctl/platform/log.h"]


def compiler_refuses(conditions, declarations=""):
    """What a compiler says of conditions and declarations that it reads with the headers."""
    text = "#include <stddef.h>\n" + "".join(f"#include <{name}>\n" for name in HEADERS)
    text += "".join(f'_Static_assert({each}, "{each}");\n' for each in conditions) + declarations
    folders = [f"-I{SOURCE / folder}" for folder in ("include", "vchip/include", "probe/include")]
    done = subprocess.run(["cc", "-fsyntax-only", *folders, "-x", "c", "-"], input=text, capture_output=True, text=True, check=False,
                          env={"PATH": os.environ["PATH"]})
    return done.stderr


def test_constants_are_those_of_the_compiler():
    stub = (pathlib.Path(swctl.__file__).parent / "c.pyi").read_text()
    names = re.findall(r"^([A-Z]\w+): int$", stub, re.MULTILINE)
    assert len(names) > 300
    assert compiler_refuses([f"(long long)({name}) == {getattr(c, name)}LL" for name in names]) == ""
    assert "static assertion failed" in compiler_refuses(["USER_LINK_UP == 0"])


def test_every_function_is_that_of_the_compiler(monkeypatch):
    """A declaration that differs from an earlier one is an error."""
    monkeypatch.syspath_prepend(SOURCE / "include")
    monkeypatch.syspath_prepend(SOURCE / "python/generate")
    headers, cdef = importlib.import_module("headers"), importlib.import_module("cdef")
    interface = headers.Interface()
    lines = [cdef.prototype(each) for each in interface.functions.values()]
    lines += [cdef.call(name, arguments) for name, (arguments, _) in interface.calls.items()]
    assert len(lines) == len(NAMES["functions"])
    assert compiler_refuses([], "\n".join(lines)) == ""
    assert "conflicting types" in compiler_refuses([], "int32_t user_port_init(uint32_t lead);\n")


def test_every_record_is_that_of_the_compiler():
    names = [kind.C_NAME for kind in map(vars(records).get, records.__all__)]
    names += ["user_pbmp_t", "user_counter_t", "vchip_frame_t", "vchip_arrival_t"]
    text = "".join(path.read_text() for folder in ("include", "vchip/include")
                   for path in (SOURCE / folder).rglob("*.h") if path.read_text().startswith("/*"))
    assert set(names) == set(re.findall(r"^struct (\w+) \{", text, re.MULTILINE))
    conditions = []
    for name in names:
        struct = c.ffi.typeof(f"struct {name}")
        conditions.append(f"sizeof(struct {name}) == {c.ffi.sizeof(struct)}")
        conditions += [f"offsetof(struct {name}, {field}) == {found.offset}" for field, found in struct.fields]
    assert compiler_refuses(conditions) == ""


def refused_header(tmp_path, addition):
    for folder in ("include", "vchip/include", "probe/include"):
        (tmp_path / folder).parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["cp", "-r", SOURCE / folder, tmp_path / folder], check=True)
    subprocess.run(["cp", "-r", SOURCE / "python", tmp_path / "python"], check=True)
    header = tmp_path / "include/swctl/qos.h"
    header.write_text(header.read_text().replace("SWCTL_END_DECLS", f"{addition}\nSWCTL_END_DECLS"))
    return subprocess.run([sys.executable, tmp_path / "python/generate", tmp_path / "out"], check=False,
                          capture_output=True, text=True)


@pytest.mark.parametrize("addition,why", [
    ("union user_word { uint32_t a; };", "'union user_word { uint32_t a; };' is not understood"),
    ("struct user_word { uint32_t a; uint32_t b : 3; };", "record user_word: 'uint32_t b : 3;' is no member"),
    ("#define USER_TWICE(x) (2 * (x))", "USER_TWICE is a macro with arguments"),
    ("/**\n * @brief Reads.\n * @param there somewhere\n * @return 0\n */\n"
     "SWCTL_API int32_t user_qos_new_get(uint32_t *there);",
     "user_qos_new_get(): 'somewhere' does not say whether there is read or written"),
    ("/**\n * @brief Reads.\n * @param ports the ports\n * @return 0\n */\n"
     "SWCTL_API int32_t user_qos_new_set(user_pbmp_t ports);",
     "ports: 'the ports' does not say whether these are chip ports or interfaces"),
])
def test_a_header_that_is_not_understood_is_refused(tmp_path, addition, why):
    done = refused_header(tmp_path, addition)
    assert done.returncode != 0
    assert done.stderr.strip() == f"generate: swctl/qos.h: {why}"
    assert not (tmp_path / "out/port.py").exists()


def test_the_reference_has_the_texts(tmp_path):
    done = subprocess.run([sys.executable, SOURCE / "docs/reference/python.py", SOURCE, tmp_path / "python"], check=False,
                          capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    page = (tmp_path / "python/swctl.port.html").read_text().replace("&nbsp;", " ")
    assert "Reads the link state; a fibre port is up only if it is enabled." in page
    assert 'href="swctl.vchip.html"' in (tmp_path / "python/index.html").read_text()


def test_the_version_is_the_header_s():
    said = re.search(r'SWCTL_VERSION "(.*)"', (SOURCE / "include/swctl/swctl.h").read_text())[1]
    assert swctl.__version__ == said
