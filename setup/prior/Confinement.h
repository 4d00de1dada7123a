#pragma once

/// Takes from this process what a reader of one foreign file has no need of: more than 512 MB of memory, more
/// than two minutes of the processor, the network, other programs, and every way of writing but the pipes
/// that are open. What the system does not have is left out, and among the sanitizers, which need more of all
/// of it, only the processor's time is limited.
void Confine();

/// After the file was opened: no other can be, not even for reading.
void ConfineToOpenFiles();
