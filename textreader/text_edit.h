#pragma once

#include <algorithm>
#include <cstdint>

namespace voxtrel::textreader {

// A change of the text: at this 0-based position so many characters went and so many came.
struct TextEdit {
    std::int32_t position = 0;
    std::int32_t removed = 0;
    std::int32_t added = 0;
};

// Characters of the text by box positions: from begin up to, not including, end.
struct TextRange {
    std::int32_t begin = 0;
    std::int32_t end = 0;

    bool Empty() const { return begin >= end; }
    std::int32_t Length() const { return std::max(end - begin, 0); }
};

// Where the range lies after the edit: empty when all of it was removed, longer when something was put inside
// it, and not longer for what was put at its edge. An empty range stays in front of what is put there.
inline TextRange Moved(TextRange range, const TextEdit& edit)
{
    const std::int32_t removedEnd = edit.position + edit.removed;
    if (edit.removed > 0 && range.begin >= edit.position && range.end <= removedEnd)
        return {edit.position, edit.position};
    if (range.Empty() && range.begin == edit.position)
        return range;
    const std::int32_t growth = edit.added - edit.removed;
    TextRange moved = range;
    if (range.begin >= removedEnd)
        moved.begin += growth;
    else if (range.begin > edit.position)
        moved.begin = edit.position + edit.added;
    if (range.end >= removedEnd && range.end > edit.position)
        moved.end += growth;
    else if (range.end > edit.position)
        moved.end = edit.position;
    moved.end = std::max(moved.end, moved.begin);
    return moved;
}

} // namespace voxtrel::textreader
