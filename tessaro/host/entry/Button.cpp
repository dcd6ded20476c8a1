// The button's picture, a PNG of 32 by 32 pixels, as the module's resource RCDATA 112: a note, which is loaded with the
// module and found without an exported name.

asm(".pushsection .note.rcdata, \"a\", %note\n"
    ".balign 4\n"
    ".long 2f - 1f\n" // Size of the owner's name, of the data, and the number.
    ".long 4f - 3f\n"
    ".long 112\n"
    "1: .asciz \"RCDATA\"\n"
    "2: .balign 4\n"
    "3: .incbin \"" TESSARO_BUTTON_PICTURE "\"\n"
    "4: .balign 4\n"
    ".popsection\n");
