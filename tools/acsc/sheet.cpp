#include "tools/acsc/sheet.h"

#include "agent/acs/unicode.h"
#include "tools/acsc/compose.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace voxtrel::acsc {

namespace {

using agent::acs::Animation;
using agent::acs::CharacterFile;
using agent::acs::Frame;
using agent::acs::Mouth;

constexpr int kSheetWidth = 1600; // pixels, as all that follow
constexpr int kTallestSheet = 30000;
constexpr int kMargin = 8;
constexpr int kTitleHeight = 24;
constexpr int kCaptionHeight = 15;
constexpr int kSquare = 8; // of the chequered ground

struct Cell {
    const Frame* frame = nullptr;
    std::optional<Mouth> mouth;
    std::string caption;
};

struct Row {
    std::string title;
    std::vector<Cell> cells;
};

std::string Caption(const Frame& frame, std::size_t number)
{
    std::string caption = std::to_string(number) + ": " + std::to_string(frame.duration);
    for (const auto& branch : frame.branches)
        caption += " >" + std::to_string(branch.target) + "(" + std::to_string(branch.probability) + "%)";
    if (frame.exitFrame)
        caption += " x" + std::to_string(*frame.exitFrame);
    return caption;
}

Row RowOf(const Animation& animation)
{
    Row row;
    int total = 0;
    for (std::size_t i = 0; i < animation.frames.size(); ++i) {
        const Frame& frame = animation.frames[i];
        total += frame.duration;
        row.cells.push_back({&frame, std::nullopt, Caption(frame, i)});
        for (const auto& overlay : frame.mouths)
            row.cells.push_back({&frame, overlay.mouth, std::string(" ") + MouthName(overlay.mouth)});
    }
    row.title = agent::acs::Utf8FromWide(animation.name) + "   " + std::to_string(animation.frames.size()) +
                " frames, " + std::to_string(total) + " hundredths";
    if (!animation.returnAnimation.empty())
        row.title += ", return " + agent::acs::Utf8FromWide(animation.returnAnimation);
    if (animation.transition == agent::acs::Transition::ExitBranches)
        row.title += ", exits";
    if (animation.damaged)
        row.title += ", damaged";
    return row;
}

class Sheet {
public:
    Sheet(const CharacterFile& character, double scale)
        : character_(character), scale_(scale),
          cellWidth_(static_cast<int>(std::ceil(character.width * scale))),
          cellHeight_(static_cast<int>(std::ceil(character.height * scale)))
    {
        columns_ = std::max(1, (kSheetWidth - kMargin) / (cellWidth_ + kMargin));
    }

    int Width() const { return kMargin + columns_ * (cellWidth_ + kMargin); }

    int HeightOf(const Row& row) const
    {
        const int lines = (static_cast<int>(row.cells.size()) + columns_ - 1) / columns_;
        return kTitleHeight + lines * LineHeight();
    }

    void Draw(cairo_t* context, const Row& row, int top) const
    {
        Text(context, kMargin, top + kTitleHeight - 8, 14, row.title);
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const int column = static_cast<int>(i) % columns_;
            const int line = static_cast<int>(i) / columns_;
            DrawCell(context, row.cells[i], kMargin + column * (cellWidth_ + kMargin),
                     top + kTitleHeight + line * LineHeight());
        }
    }

private:
    int LineHeight() const { return cellHeight_ + kCaptionHeight + kMargin; }

    static void Text(cairo_t* context, int x, int y, double size, const std::string& text)
    {
        cairo_set_source_rgb(context, 0.1, 0.1, 0.1);
        cairo_set_font_size(context, size);
        cairo_move_to(context, x, y);
        cairo_show_text(context, text.c_str());
    }

    void DrawCell(cairo_t* context, const Cell& cell, int x, int y) const
    {
        for (int sy = 0; sy < cellHeight_; sy += kSquare) {
            for (int sx = 0; sx < cellWidth_; sx += kSquare) {
                const double shade = (sx + sy) / kSquare % 2 == 0 ? 0.86 : 0.80;
                cairo_set_source_rgb(context, shade, shade, shade);
                cairo_rectangle(context, x + sx, y + sy, std::min(kSquare, cellWidth_ - sx),
                                std::min(kSquare, cellHeight_ - sy));
                cairo_fill(context);
            }
        }
        if (IsUnseen(*cell.frame))
            Text(context, x + 4, y + 16, 11, "unseen");
        else
            Picture(context, ComposeFrame(character_, *cell.frame, cell.mouth), x, y);
        Text(context, x, y + cellHeight_ + 11, 10, cell.caption);
    }

    void Picture(cairo_t* context, const Pixels& pixels, int x, int y) const
    {
        cairo_surface_t* surface =
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels.width, pixels.height);
        unsigned char* bytes = cairo_image_surface_get_data(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        for (int py = 0; py < pixels.height; ++py) {
            for (int px = 0; px < pixels.width; ++px) {
                const Rgba& p = pixels.At(px, py);
                const std::uint32_t value = (std::uint32_t{p.alpha} << 24) | (std::uint32_t{p.red} << 16) |
                                            (std::uint32_t{p.green} << 8) | p.blue;
                std::memcpy(bytes + static_cast<std::ptrdiff_t>(py) * stride + 4 * px, &value, sizeof value);
            }
        }
        cairo_surface_mark_dirty(surface);
        cairo_save(context);
        cairo_translate(context, x, y);
        cairo_scale(context, scale_, scale_);
        cairo_set_source_surface(context, surface, 0, 0);
        cairo_pattern_set_filter(cairo_get_source(context),
                                 scale_ > 1 ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
        cairo_paint(context);
        cairo_restore(context);
        cairo_surface_destroy(surface);
    }

    const CharacterFile& character_;
    double scale_;
    int cellWidth_, cellHeight_;
    int columns_ = 1;
};

} // namespace

std::string DrawSheet(const CharacterFile& character, const SheetOptions& options, const std::string& path)
{
    std::vector<Row> rows;
    for (const Animation& animation : character.animations) {
        if (options.animation.empty() || FindAnimation(character, options.animation) == &animation)
            rows.push_back(RowOf(animation));
    }
    if (rows.empty())
        return "there is no such animation";
    const Sheet sheet(character, options.scale);
    int height = kMargin;
    for (const Row& row : rows)
        height += sheet.HeightOf(row);
    if (height > kTallestSheet)
        return "the sheet would be too tall; take one animation, or a smaller --scale";

    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, sheet.Width(), height);
    cairo_t* context = cairo_create(surface);
    cairo_select_font_face(context, "sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_paint(context);
    int top = 0;
    for (const Row& row : rows) {
        sheet.Draw(context, row, top);
        top += sheet.HeightOf(row);
    }
    const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    return status == CAIRO_STATUS_SUCCESS ? "" : cairo_status_to_string(status);
}

} // namespace voxtrel::acsc
