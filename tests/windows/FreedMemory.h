#pragma once

// From now on every block of a heap, of this program, our libraries and the system's, lies at the end of a
// page of its own, which is taken away when the block is freed: whoever uses freed memory, or goes beyond the
// end of a block, ends the process there, with a line that says who. It stays on. False where the system's
// functions begin in a way that is not known here.
bool TrapFreedMemory();

// First argument of a test program that has it call TrapFreedMemory before anything else.
constexpr const char* TRAP_SWITCH = "--trap-freed-memory";
