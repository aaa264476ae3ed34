// Plain memory: texts have their places, but nothing guards them.
#include "chars/guarded_text.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kRoom = 0x10000;

} // namespace

GuardedText::GuardedText() : room_(kRoom), area_(new char[3 * kRoom]()) {}

GuardedText::~GuardedText()
{
    delete[] area_;
}

} // namespace vlx::test
