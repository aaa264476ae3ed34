#include "walker.hpp"

#include <algorithm>

namespace vlx::cli {

PageFacts::PageFacts(TSLocale* locale, const UnicodeView* view)
{
    // Only a stateful page ends a text that is in the multi-byte state with a byte, and only there
    // a packed value of two bytes gets a shift byte.
    char shift[5] = {};
    stateful_ = TSTerminateStringEx(locale, shift, 1, 0) == 1;
    if (stateful_) {
        shiftOut_ = static_cast<std::uint8_t>(shift[0]);
        TSPutCharEx(locale, shift, 0, 0x4141);
        shiftIn_ = static_cast<std::uint8_t>(shift[0]);
    }
    for (int byte = 0; byte < 256; ++byte) {
        const char text[1] = {static_cast<char>(byte)};
        maxBytes_ = std::max(maxBytes_, stateful_ ? TSByteLengthEx(locale, text, 1)
                                                  : TSByteLength(locale, text));
    }
    constexpr std::uint8_t builtInLineFeed = 0x0A;
    lineEnds_[view ? view->page().lineFeedChar : builtInLineFeed] = true;
    if (view) {
        lineEnds_[view->page().lineEnd3Char] = true;
        lineEnds_[view->page().lineEnd4Char] = true;
    }
}

Walker::Walker(TSLocale* locale, const PaddedText& text, const UnicodeView* view)
    : locale_(locale), text_(text), view_(view), page_(locale, view)
{
}

Item Walker::characterAt(Place place, std::int32_t size) const
{
    Item item{Item::Kind::kCharacter, place.offset, size, place.state};
    item.packed = TSGetCharEx(locale_, text_.at(place.offset), place.state);
    item.characterClass = TSGetCharTypeW(locale_, item.packed, TS_CT_CLASS);
    if (view_)
        item.unicode =
            view_->unicode(reinterpret_cast<const std::uint8_t*>(text_.at(place.offset)), size);
    return item;
}

Item Walker::shiftAt(std::int32_t offset) const
{
    return {Item::Kind::kShift, offset, 1, page_.isShiftIn(text_.byte(offset)) ? 1 : 0};
}

void Walker::count(const Item& item)
{
    switch (item.kind) {
    case Item::Kind::kCharacter:
        ++totals_.characters;
        totals_.multiByte += item.size > 1;
        totals_.unmapped += view_ && !item.unicode;
        lineIsOpen_ = item.size > 1 || !page_.isLineEnd(text_.byte(item.offset));
        totals_.lines += !lineIsOpen_;
        break;
    case Item::Kind::kShift:
        ++totals_.shiftBytes;
        totals_.shiftRuns += item.offset > 0 && page_.isShift(text_.byte(item.offset - 1));
        break;
    case Item::Kind::kCutOff:
        totals_.cutOff = item;
        lineIsOpen_ = true;
        break;
    }
}

void Walker::keep(const Item& item)
{
    if (item.kind == Item::Kind::kCharacter) {
        if (totals_.characters % kCheckpointEvery == 0)
            checkpoints_.push_back(item.offset);
        last_[static_cast<std::size_t>(totals_.characters % kBackChecks)] = {item.offset,
                                                                             item.state};
        tail_.clear();
    } else {
        tail_.push_back(item);
    }
    count(item);
    if (receive_ && !(*receive_)(item))
        receive_ = nullptr;
}

bool Walker::step(Place& place)
{
    if (place.offset >= text_.size())
        return false;
    const char* const at = text_.at(place.offset);
    Place character = place;
    if (page_.isShift(text_.byte(place.offset))) {
        const Item shift = shiftAt(place.offset);
        keep(shift);
        character = {place.offset + 1, shift.state};
    }
    const std::int32_t left = text_.size() - character.offset;
    if (left == 0)
        return false;
    const std::int32_t size = TSByteLengthEx(locale_, at, place.state);
    if (size > left) {
        keep({Item::Kind::kCutOff, character.offset, left, character.state, size});
        return false;
    }
    keep(characterAt(character, size));
    const char* const next = TSNextCharEx(locale_, at, place.state, &place.state);
    place.offset = character.offset + size;
    if (next > text_.at(place.offset) && place.offset < text_.size())
        keep(shiftAt(place.offset++));
    behindLast_ = place;
    tail_.clear();
    return true;
}

Totals Walker::forward(const ItemReceiver& receive)
{
    receive_ = receive ? &receive : nullptr;
    totals_.bytes = text_.size();
    Place place{0, 0};
    while (step(place))
        ;
    totals_.lines += lineIsOpen_; // the last line may have no end
    return totals_;
}

Walker::Place Walker::previous(std::int32_t start, Place place) const
{
    const char* const text = text_.at(start);
    const char* const from = text_.at(place.offset);
    const char* const at = page_.stateful()
                               ? TSPrevCharEx(locale_, text, from, place.state, &place.state, 0)
                               : TSPrevChar(locale_, text, from, 0);
    return {static_cast<std::int32_t>(at - text_.begin()), place.state};
}

std::int32_t Walker::checkpointBefore(std::int32_t offset) const
{
    if (page_.stateful()) // goes straight back, and has no such places
        return 0;
    const auto behind = std::lower_bound(checkpoints_.begin(), checkpoints_.end(), offset);
    return behind == checkpoints_.begin() ? 0 : *(behind - 1);
}

void Walker::backward(const ItemReceiver& receive) const
{
    for (const Item& item : std::vector<Item>(tail_.rbegin(), tail_.rend()))
        if (!receive(item))
            return;
    for (Place place = behindLast_; place.offset > 0;) {
        Place character = previous(checkpointBefore(place.offset), place);
        character.offset = std::max(character.offset, 0); // broken text can lead before the start
        std::int32_t size = place.offset - character.offset;
        const std::int32_t last = place.offset - 1;
        const bool shiftAlone = character.offset == last;
        if (page_.isShift(text_.byte(last)) &&
            (shiftAlone ||
             size != TSByteLengthEx(locale_, text_.at(character.offset), character.state))) {
            if (!receive(shiftAt(last)))
                return;
            --size;
        }
        if (size > 0 && !receive(characterAt(character, size)))
            return;
        place = character;
    }
}

Checks Walker::check() const
{
    Checks checks;
    checks.counted = page_.stateful() ? TSNumCharsEx(locale_, text_.begin(), 0, text_.size(), 0)
                                      : TSNumChars(locale_, text_.begin(), text_.size(), 0);
    checks.countAgrees = checks.counted == totals_.characters;

    Place place = behindLast_;
    checks.backAgrees = true;
    const std::int32_t steps = std::min(totals_.characters, kBackChecks);
    for (; checks.backAgrees && checks.wentBack < steps; ++checks.wentBack) {
        const Place& expected = last_[static_cast<std::size_t>(
            (totals_.characters - 1 - checks.wentBack) % kBackChecks)];
        place = previous(0, place);
        checks.backAgrees = place.offset == expected.offset && place.state == expected.state;
    }
    return checks;
}

} // namespace vlx::cli
