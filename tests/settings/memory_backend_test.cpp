#include "settings/memory_backend.h"

#include "settings/backend_contract.h"

namespace voxtrel::tests {

INSTANTIATE_TEST_SUITE_P(MemoryBackend, BackendContract,
                         testing::Values([] { return std::make_unique<settings::MemoryBackend>(); }));

} // namespace voxtrel::tests
