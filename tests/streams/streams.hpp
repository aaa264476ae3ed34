// A stream over a device, on small pages made by hand, for the tests of single promises.
#pragma once

#include <string>

#include "convert/small_pages.hpp"
#include "streams/device.hpp"
#include "streams/stream.hpp"
#include "support/allocator.hpp"

namespace vlx::test {

class Streams : public SmallPages {
  protected:
    Streams()
    {
        Allocator::reset();
        TSInit(nullptr, Allocator::allocate, Allocator::free, Allocator::allocateObject,
               Allocator::freeObject, 7, 0);
    }
    ~Streams() override
    {
        if (stream_ != nullptr) {
            TSCloseStream(stream_, locale_);
        }
        tsDefaultLocale = nullptr;
        EXPECT_EQ(TSTerm(), 0);
        EXPECT_TRUE(Allocator::sound());
        EXPECT_EQ(Allocator::liveBlocks(), 0);
    }

    // What `io` answers, in this order; then all that it is asked, or the end of the data.
    using Answers = std::vector<std::int32_t>;

    void openReader(TSLocale& locale, const std::string& data, const Answers& answers = {})
    {
        data_ = data;
        open(locale, answers, TS_STREAM_READ);
    }
    void openWriter(TSLocale& locale, const Answers& answers = {})
    {
        open(locale, answers, TS_STREAM_WRITE);
    }
    std::int32_t close()
    {
        const std::int32_t result = TSCloseStream(stream_, locale_);
        stream_ = nullptr;
        return result;
    }

    // What a function for bytes gave, as text.
    template <class Read>
    std::string textOf(Read read)
    {
        char area[64];
        result_ = read(area);
        return result_ < 0 ? std::string() : std::string(area, static_cast<std::size_t>(result_));
    }
    std::string line(std::int32_t size, std::uint32_t options)
    {
        return textOf(
            [&](char* area) { return TSReadString(stream_, locale_, area, size, options); });
    }
    std::string lineEx(std::int32_t state, std::int32_t size, std::uint32_t options)
    {
        return textOf([&](char* area) {
            return TSReadStringEx(stream_, locale_, area, state, size, options);
        });
    }
    template <class Unit>
    std::vector<Unit> units(std::int32_t size, std::uint32_t options)
    {
        Unit area[32];
        if constexpr (sizeof(Unit) == 2)
            result_ = TSReadStringU(stream_, locale_, area, size, options);
        else
            result_ = TSReadStringW(stream_, locale_, area, size, options);
        return {area, area + std::max(result_, 0)};
    }

    std::int32_t read() { return TSReadCharW(stream_, locale_); }
    std::int32_t error() const { return locale_->lastError; }
    std::string held() const { return {stream_->buffer, stream_->heldCount}; }

    TSStream* stream_ = nullptr;
    TSLocale* locale_ = nullptr;
    std::string data_;    // what is left to be read
    std::string written_; // what a writer was given
    std::vector<std::int32_t> asked_;
    std::int32_t result_ = 0; // of the last line

  private:
    void open(TSLocale& locale, const Answers& answers, std::uint32_t mode)
    {
        locale_ = &locale;
        answers_ = answers;
        locale.lastError = kUntouchedError;
        stream_ = TSOpenStream(&locale, io, context(), mode);
        ASSERT_NE(stream_, nullptr);
        EXPECT_EQ(locale.lastError, TS_ERR_NONE);
    }

    Answers answers_;

  protected:
    TSContext context() { return reinterpret_cast<TSContext>(this); }

    static std::int32_t io(TSContext context, void* buffer, std::int32_t count)
    {
        Streams& test = *reinterpret_cast<Streams*>(context);
        test.asked_.push_back(count);
        std::int32_t answer = count;
        if (!test.answers_.empty()) {
            answer = test.answers_.front();
            test.answers_.erase(test.answers_.begin());
        }
        const auto moved = static_cast<std::size_t>(std::clamp(answer, 0, count));
        if (test.stream_ != nullptr && test.stream_->isWriter) {
            test.written_.append(static_cast<const char*>(buffer), moved);
            return answer;
        }
        if (answer > 0 && test.data_.empty())
            return -1;
        const std::size_t taken = test.data_.copy(static_cast<char*>(buffer), moved);
        test.data_.erase(0, taken);
        return answer > count || answer < 0 ? answer : static_cast<std::int32_t>(taken);
    }

    // 16-bit values as the bytes of a stream.
    static std::string utf16(const Unicode& values)
    {
        return {reinterpret_cast<const char*>(values.data()), 2 * values.size()};
    }
};

} // namespace vlx::test
