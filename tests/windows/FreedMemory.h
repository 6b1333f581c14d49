#pragma once

// From now on every block of a heap, of this program, our libraries and the system's, but for what
// GlobalAlloc and LocalAlloc give, lies at the end of a page of its own, which is taken away when the block
// is freed: whoever uses freed memory, or goes beyond the end of a block, ends the process there, with a line
// that says who. It stays on. False where the system's functions begin in a way that is not known here.
bool TrapFreedMemory();

// Where in which program or library an address lies; a symbol table names it. No text when it lies in none.
// Without the heap, which may be what is damaged; the next call overwrites the text.
const char* PlaceOf(const void* address);

// First argument of a test program that has it call TrapFreedMemory before anything else.
constexpr const char* TRAP_SWITCH = "--trap-freed-memory";
