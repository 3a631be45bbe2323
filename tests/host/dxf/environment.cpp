// Makes the entity classes known before the first test, as programs do at their start.
#include <gtest/gtest.h>

#include "host/ent/register.h"

namespace {

class EntityClasses : public testing::Environment {
public:
    void SetUp() override { host::registerEntityClasses(); }
};

const auto* const kEntityClasses = testing::AddGlobalTestEnvironment(new EntityClasses);

} // namespace
