// Random sequences of edits through the library, compared with a model after every step.
//
// TIBXML_MODEL_STEPS sets how many steps there are in all; TIBXML_MODEL_SEED runs the one sequence
// that a failure names.

#include "World.h"

#include "EngineTest.h"

#include <cstdlib>

namespace model {

constexpr unsigned stepsInSequence = 200;

unsigned settingOr(char const* name, unsigned otherwise) {
    char const* const value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

void runSequence(unsigned seed) {
    std::size_t const before = tibxml::com::liveObjects();
    {
        World world{seed};
        for (unsigned step = 0; step != stepsInSequence; ++step) {
            world.step();
            if (step % 25 == 0) world.checkAll();
            ASSERT_FALSE(testing::Test::HasFailure()) << "at step " << step;
        }
        world.finish();
    }
    EXPECT_EQ(tibxml::com::liveObjects(), before);
}

TEST(Edits, DoWhatTheModelDoes) {
    if (unsigned const seed = settingOr("TIBXML_MODEL_SEED", 0)) return runSequence(seed);
    unsigned const sequences = settingOr("TIBXML_MODEL_STEPS", 100'000) / stepsInSequence;
    for (unsigned seed = 1; seed <= sequences; ++seed) {
        runSequence(seed);
        ASSERT_FALSE(HasFailure()) << "repeat with TIBXML_MODEL_SEED=" << seed;
    }
}

} // namespace model
