#pragma once
// How many threads a run's work that splits into pieces uses: one per core
// of the machine unless the user chose another number.

namespace vantor {

// 0 goes back to one per core.
void SetWorkerThreads(unsigned count);
// At least 1.
unsigned WorkerThreads();

}  // namespace vantor
