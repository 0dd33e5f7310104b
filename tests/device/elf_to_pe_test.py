#!/usr/bin/env python3
"""What tools/elf-to-pe must refuse: small programs, each with one thing that a library for the handheld cannot carry. The
good program beside them shows that it is that thing which is refused."""

import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
IMPORTS = "Sleep coredll 496\nsocket ws2 name\n"
GOOD = """
    .arm
    .section .text.start,"ax"
    .global DllMain, InitializeCustomItem, CustomItemOptionsDlgProc
    .type DllMain, %function
DllMain:
InitializeCustomItem:
CustomItemOptionsDlgProc:
    bl Sleep
    bl socket
    bx lr
    .word DllMain
"""
# Appended to the good program, and a part of what the refusal must say.
REFUSED = {
    "a Thumb function": (".thumb\n.thumb_func\n.type small, %function\nsmall: bx lr\n.arm\n.word small", "Thumb"),
    "a weak symbol that nobody defines": (".weak nobody\nbl nobody", "undefined symbol nobody"),
    "an address in two halves": (".arch armv7-a\nmovw r0, #:lower16:DllMain", "relocation of type 43"),
    "an address that does not move": (".global fixed\n.set fixed, 0x1234\n.reloc ., R_ARM_ABS32, fixed\n.word 0", "does not lie in the library"),
    "an unaligned address": (".byte 0\n.word DllMain", "unaligned"),
    "an address outside of the library": (".word DllMain + 0x1000000", "outside"),
    "a section without a place": ('.word table\n.section .tables,"a"\ntable: .word 1', ".tables"),
    "an answer in the flags": (".global __aeabi_cdcmple\n__aeabi_cdcmple: bx lr", "answers in flags"),
    "a static with a constructor": ('.section .init_array,"aw"\n.word DllMain', "has a constructor"),
}


def convert(source):
    """The converter's code and what it or the linker said."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in (("p.s", source), ("imports", IMPORTS), ("p.rc", '1 RCDATA { "x" }\n')):
            Path(folder, name).write_text(text)
        converter = ROOT / "tools/elf-to-pe"
        for command in (
                (converter, "thunks", "imports", "thunks.s"),
                ("arm-none-eabi-as", "-march=armv4t", "thunks.s", "-o", "thunks.o"),
                ("arm-none-eabi-as", "-march=armv4t", "p.s", "-o", "p.o"),
                ("arm-none-eabi-ld", "-q", "--gc-sections", "--fix-v4bx-interworking", "-T", ROOT / "platform/device/ce.ld",
                 "p.o", "thunks.o", "-o", "p.elf"),
                ("x86_64-w64-mingw32-windres", "-O", "coff", "p.rc", "p.res"),
                (converter, "convert", "--imports", "imports", "--exports", ROOT / "item/quorvane.def", "--resources", "p.res",
                 "p.elf", "p.dll")):
            done = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
            if done.returncode:
                break
        return done.returncode, done.stderr


class Converter(unittest.TestCase):
    def test_refuses_what_it_cannot_carry_over(self):
        self.assertEqual(convert(GOOD), (0, ""))
        for name, (source, message) in REFUSED.items():
            with self.subTest(name):
                code, said = convert(f"{GOOD}{source}\n")
                self.assertEqual((code, message in said), (1, True), said)


unittest.main()
