#pragma once

// From the first call on, blocks of 150 to 4,096 bytes that the control library and the host library free can
// be touched no more: whoever reads or writes an object that is gone crashes there and then, whatever the
// optimiser makes of it. Lasts to the end of the process.
void TrapFreedMemory();
