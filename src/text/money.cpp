#include "text/money.hpp"

namespace vlx {

const char* moneyLayout(std::int32_t signPosition, bool symbolPrecedes)
{
    static constexpr int kPositions = 5; // the last one stands for any other
    static constexpr char kLayouts[kPositions][2][6] = {
        {"(VPS)", "(SPV)"}, {"GVPS", "GSPV"}, {"VPSG", "SPVG"}, {"VPGS", "GSPV"}, {"VPSG", "SGPV"},
    };
    const bool isKnown = signPosition >= 0 && signPosition < kPositions - 1;
    return kLayouts[isKnown ? signPosition : kPositions - 1][symbolPrecedes];
}

} // namespace vlx
