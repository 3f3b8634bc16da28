// Runs the tests of a suite on each generation of vector units that this processor has.
#pragma once

#include <gtest/gtest.h>

#include <hwy/targets.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

class EveryTarget : public testing::TestWithParam<std::int64_t>
{
protected:
    EveryTarget() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~EveryTarget() override { hwy::SetSupportedTargetsForTest(0); }
};

inline std::vector<std::int64_t> everyTarget()
{
    std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
    if (std::find(targets.begin(), targets.end(), HWY_STATIC_TARGET) == targets.end())
        targets.push_back(HWY_STATIC_TARGET); // what is left where there is none of the others
    return targets;
}

inline std::string targetName(const testing::TestParamInfo<std::int64_t> &target)
{
    return hwy::TargetName(target.param);
}

} // namespace tessara
