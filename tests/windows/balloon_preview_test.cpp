#include "options/view/balloon_preview.h"

#include <gtest/gtest.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

namespace voxtrel::options {
namespace {

const wxString kText = "This is how the words look.";

class BalloonPreviewText : public testing::Test {
protected:
    FittedText Fit(int points, const wxSize& room, const wxString& text = kText)
    {
        return FitText(dc_, text, wxFont(wxFontInfo(points)), room);
    }

    // Whether the lines stand in the room, none of them cut.
    testing::AssertionResult StandsIn(const FittedText& text, const wxSize& room)
    {
        dc_.SetFont(text.font);
        for (const wxString& line : text.lines) {
            if (dc_.GetTextExtent(line).x > room.x)
                return testing::AssertionFailure() << "too wide: " << line;
        }
        if (text.lines.empty() || text.lineHeight * static_cast<int>(text.lines.size()) > room.y)
            return testing::AssertionFailure() << text.lines.size() << " lines of " << text.lineHeight;
        return testing::AssertionSuccess();
    }

private:
    wxBitmap bitmap_{10, 10};
    wxMemoryDC dc_{bitmap_};
};

TEST_F(BalloonPreviewText, IsWholeWhenThereIsRoom)
{
    const FittedText text = Fit(10, {400, 100});
    EXPECT_TRUE(StandsIn(text, {400, 100}));
    EXPECT_EQ(wxJoin(text.lines, ' ', '\0'), kText);
}

TEST_F(BalloonPreviewText, EndsWithAnEllipsisWhereTheRoomEnds)
{
    for (const int points : {14, 36, 72}) {
        const int lineHeight = Fit(points, {10000, 10000}).lineHeight;
        const wxSize room(lineHeight * 6, lineHeight * 5 / 2);
        const FittedText text = Fit(points, room, kText + " " + kText + " " + kText);
        EXPECT_TRUE(StandsIn(text, room)) << points;
        ASSERT_EQ(text.lines.size(), 2u);
        EXPECT_TRUE(text.lines[0].StartsWith("This is how")) << text.lines[0];
        EXPECT_TRUE(text.lines[1].EndsWith("...")) << text.lines[1];
        EXPECT_EQ(text.font.GetPointSize(), points);
    }
}

TEST_F(BalloonPreviewText, ShrinksToALineThatTheRoomHolds)
{
    const wxSize room(300, 40);
    const FittedText text = Fit(72, room);
    EXPECT_TRUE(StandsIn(text, room));
    EXPECT_GT(text.lineHeight, 30);
    EXPECT_TRUE(text.lines.Last().StartsWith("This"));
}

TEST_F(BalloonPreviewText, CutsAWordThatIsWiderThanTheRoom)
{
    const wxSize room(120, 60);
    EXPECT_TRUE(StandsIn(Fit(24, room, "Donaudampfschifffahrt"), room));
}

} // namespace
} // namespace voxtrel::options
