#pragma once

// From the first call on, blocks of 150 to 8,192 bytes that the control library and the host library free can
// be touched no more: whoever reads or writes an object that is gone, or beyond its end, crashes there and
// then, whatever the optimiser makes of it. Lasts to the end of the process; the libraries have to stay
// loaded.
void TrapFreedMemory();

// Argument of a test program that has it call TrapFreedMemory before the first test.
constexpr const char* TRAP_SWITCH = "--trap-freed-memory";
