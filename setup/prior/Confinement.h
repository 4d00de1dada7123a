#pragma once

/// Takes away from this process whatever a reader of one foreign file does not need: more than 512 MB of
/// memory, more than two minutes of processor time, the network, other programs, and every way of writing
/// except to pipes already open. Limits that the system does not support are skipped; under the sanitizers,
/// which need more of everything, only processor time is limited.
void confine();

/// After this no other file can be opened, not even for reading.
void confineToOpenFiles();
