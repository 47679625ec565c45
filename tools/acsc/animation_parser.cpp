// Animations: each line of the block makes one or more frames.
//
// Tweens and ranges become frames at once. Labels are gathered on the way and turned into frame numbers at
// the end, when all are known; so do exits that lead backwards, and the swing of parts, which needs the time
// of each frame.

#include "tools/acsc/animation_parser.h"

#include "agent/acs/names.h"
#include "agent/acs/unicode.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace voxtrel::acsc {

namespace {

using agent::acs::SameName;
using agent::acs::Transition;

constexpr int kLongestDuration = 65535;
constexpr int kMostFrames = 2000;
constexpr std::size_t kMostBranches = 3;

enum class Ease { InOut, In, Out, Linear, Overshoot };

double Eased(Ease ease, double t)
{
    switch (ease) {
    case Ease::InOut:
        return 0.5 - 0.5 * std::cos(std::numbers::pi * t);
    case Ease::In:
        return t * t;
    case Ease::Out:
        return 1 - (1 - t) * (1 - t);
    case Ease::Linear:
        return t;
    case Ease::Overshoot:
        break;
    }
    constexpr double kReach = 1.70158; // a tenth too far
    const double left = t - 1;
    return 1 + (kReach + 1) * left * left * left + kReach * left * left;
}

struct LabelUse {
    std::string label;
    int probability = 0; // percent, of a branch
    int line = 0;
};

// What may follow the picture on a line that makes frames.
struct FrameOptions {
    std::optional<int> duration;
    Ease ease = Ease::InOut;
    std::optional<int> mouths;
    std::vector<LabelUse> branches;
    std::optional<LabelUse> exit;
    std::optional<int> sound;
};

struct OpenFrame {
    SourceFrame frame;
    std::vector<LabelUse> branches;
    std::optional<LabelUse> exit;
};

struct Sway {
    int part = 0;
    double rotate = 0;
    Point move;
    int period = 0; // hundredths of a second
};

enum class Leaving { Nothing, Return, Exits, Backwards };

class AnimationParser {
public:
    AnimationParser(const PoseTable& poses, CharacterSource& source) : poses_(poses), source_(source) {}

    SourceAnimation Parse(const Statement& statement)
    {
        WordReader words(statement);
        words.Accept("animation");
        animation_.name = agent::acs::WideFromUtf8(words.Name("the name of the animation"));
        animation_.line = statement.line;
        words.Finish();
        for (const Statement& line : statement.block)
            ParseLine(line, Nesting::Outermost);
        if (frames_.empty())
            words.Fail("the animation has no frames");
        if (pendingLabels_ > 0)
            words.Fail("the last label of the animation names no frame: nothing follows it");
        Finish();
        return std::move(animation_);
    }

private:
    enum class Nesting { Outermost, InRepeat };

    void ParseLine(const Statement& line, Nesting nesting)
    {
        WordReader words(line);
        const bool repeats = words.Accept("repeat");
        if (line.hasBlock != repeats)
            words.Fail(repeats ? "'repeat' needs a { block }" : "no block belongs here");
        if (repeats)
            ParseRepeat(line, words);
        else if (words.Accept("frame"))
            ParseFrame(words);
        else if (words.Accept("frames"))
            ParseRange(words);
        else if (words.Accept("tween"))
            ParseTween(words);
        else if (words.Accept("insert"))
            ParseInsert(words);
        else if (words.Accept("pace"))
            pace_ = words.Integer("a duration", 1, kLongestDuration);
        else if (nesting == Nesting::Outermost)
            ParseOutermost(line, words);
        else
            words.Fail("'" + line.words.front().text + "' does not belong into a repeated block");
        words.Finish();
    }

    void ParseOutermost(const Statement& line, WordReader& words)
    {
        if (words.Accept("sway")) {
            ParseSway(words);
        } else if (words.Accept("return")) {
            SetLeaving(words, Leaving::Return);
            animation_.returnAnimation = agent::acs::WideFromUtf8(words.Name("an animation"));
        } else if (words.Accept("leave")) {
            if (words.Accept("exits"))
                SetLeaving(words, Leaving::Exits);
            else if (words.Accept("backwards"))
                SetLeaving(words, Leaving::Backwards);
            else
                words.Fail("'leave' is followed by 'exits' or 'backwards'");
        } else if (line.words.front().text.starts_with('@')) {
            const std::string label = words.Any("a label");
            if (!labels_.emplace(label, static_cast<int>(frames_.size())).second)
                words.Fail("there is a label '" + label + "' already");
            ++pendingLabels_;
        } else {
            words.Finish();
        }
    }

    void SetLeaving(WordReader& words, Leaving leaving)
    {
        if (leaving_ != Leaving::Nothing)
            words.Fail("how the animation is left has been said already");
        leaving_ = leaving;
    }

    void ParseRepeat(const Statement& line, WordReader& words)
    {
        const int times = words.Integer("how often it is repeated", 1, kMostFrames);
        for (int i = 0; i < times; ++i) {
            for (const Statement& inner : line.block)
                ParseLine(inner, Nesting::InRepeat);
        }
    }

    void ParseFrame(WordReader& words)
    {
        std::vector<Layer> layers;
        if (!words.Accept("none"))
            layers = ParsePicture(words);
        AddFrame(words, std::move(layers));
        ApplyOptions(words, ParseOptions(words), frames_.size() - 1);
    }

    std::vector<Layer> ParsePicture(WordReader& words)
    {
        std::vector<Layer> layers;
        do {
            Layer& layer = layers.emplace_back();
            layer.stance = FillIn(source_.parts, FindPose(words, poses_));
            if (words.Accept("at")) {
                const Point at = words.Pair("a place");
                layer.x = static_cast<int>(std::lround(std::clamp(at.x, -2000.0, 2000.0)));
                layer.y = static_cast<int>(std::lround(std::clamp(at.y, -2000.0, 2000.0)));
            }
        } while (words.Accept("+"));
        return layers;
    }

    // walk1..walk8
    void ParseRange(WordReader& words)
    {
        const std::string range = words.Any("a range of poses");
        const std::size_t dots = range.find("..");
        const auto split = [](std::string_view name) {
            const std::size_t digits = name.find_last_not_of("0123456789") + 1;
            int number = -1;
            std::from_chars(name.data() + digits, name.data() + name.size(), number);
            return std::pair(std::string(name.substr(0, digits)), number);
        };
        if (dots == std::string::npos)
            words.Fail("'" + range + "' is no range like walk1..walk8");
        const auto [stem, first] = split(std::string_view(range).substr(0, dots));
        const auto [lastStem, last] = split(std::string_view(range).substr(dots + 2));
        if (stem != lastStem || first < 0 || last < 0 || std::abs(last - first) > kMostFrames)
            words.Fail("'" + range + "' is no range like walk1..walk8");

        const std::size_t begin = frames_.size();
        for (int i = first;; i += first <= last ? 1 : -1) {
            const Statement pose{words.Line(), {{stem + std::to_string(i), false}}, false, {}};
            WordReader poseWords(pose);
            AddFrame(words, ParsePicture(poseWords));
            if (i == last)
                break;
        }
        ApplyOptions(words, ParseOptions(words), begin);
    }

    void ParseTween(WordReader& words)
    {
        std::optional<Stance> from;
        if (!words.Accept("to")) {
            from = FillIn(source_.parts, FindPose(words, poses_));
            if (!words.Accept("to"))
                words.Fail("'to' is missing: tween [POSE] to POSE steps N");
        } else if (!frames_.empty() && !frames_.back().frame.layers.empty()) {
            from = frames_.back().frame.layers.front().stance;
        }
        if (!from)
            words.Fail(
                "no frame with a picture stands before this tween; say where it starts: tween POSE to POSE");
        std::vector<Layer> picture = ParsePicture(words);
        if (!words.Accept("steps"))
            words.Fail("'steps' is missing: tween [POSE] to POSE steps N");
        const int steps = words.Integer("the number of steps", 1, kMostFrames);

        const FrameOptions options = ParseOptions(words);
        const std::size_t begin = frames_.size();
        const Stance to = picture.front().stance;
        for (int step = 1; step <= steps; ++step) {
            picture.front().stance =
                step == steps ? to
                              : Between(*from, to, Eased(options.ease, static_cast<double>(step) / steps));
            AddFrame(words, picture);
        }
        ApplyOptions(words, options, begin);
    }

    void ParseInsert(WordReader& words)
    {
        const std::wstring name = agent::acs::WideFromUtf8(words.Name("an animation"));
        const auto found =
            std::find_if(source_.animations.begin(), source_.animations.end(),
                         [&](const SourceAnimation& other) { return SameName(other.name, name); });
        if (found == source_.animations.end())
            words.Fail("no animation above is called '" + agent::acs::Utf8FromWide(name) + "'");
        std::vector<SourceFrame> frames = found->frames;
        if (words.Accept("reversed"))
            std::reverse(frames.begin(), frames.end());
        for (SourceFrame& frame : frames) {
            AddFrame(words, std::move(frame.layers));
            frames_.back().frame.duration = frame.duration;
            frames_.back().frame.sound = frame.sound;
        }
    }

    void ParseSway(WordReader& words)
    {
        Sway sway;
        sway.part = FindPart(words, source_.parts);
        while (!words.AtEnd()) {
            if (words.Accept("rotate"))
                sway.rotate = words.Number("an angle");
            else if (words.Accept("move"))
                sway.move = words.Pair("a shift");
            else if (words.Accept("period"))
                sway.period = words.Integer("the period", 2, kLongestDuration);
            else
                words.Finish();
        }
        if (sway.period == 0)
            words.Fail("'period' is missing");
        sways_.push_back(sway);
    }

    FrameOptions ParseOptions(WordReader& words)
    {
        FrameOptions options;
        while (!words.AtEnd()) {
            if (words.Accept("duration"))
                options.duration = words.Integer("the duration", 0, kLongestDuration);
            else if (words.Accept("ease"))
                options.ease = ParseEase(words);
            else if (words.Accept("mouths"))
                options.mouths = FindMouthSet(words);
            else if (words.Accept("branch"))
                options.branches.push_back(ParseBranch(words));
            else if (words.Accept("exit"))
                options.exit = LabelUse{words.Any("a label"), 0, words.Line()};
            else if (words.Accept("sound"))
                options.sound = SoundIndex(words);
            else
                words.Finish();
        }
        return options;
    }

    static Ease ParseEase(WordReader& words)
    {
        constexpr std::pair<std::string_view, Ease> kKinds[] = {{"inout", Ease::InOut},
                                                                {"in", Ease::In},
                                                                {"out", Ease::Out},
                                                                {"linear", Ease::Linear},
                                                                {"overshoot", Ease::Overshoot}};
        for (const auto& [name, ease] : kKinds) {
            if (words.Accept(name))
                return ease;
        }
        words.Fail("'ease' is followed by inout, in, out, linear or overshoot");
    }

    static LabelUse ParseBranch(WordReader& words)
    {
        LabelUse use{words.Any("a label"), 0, words.Line()};
        std::string percent = words.Any("the probability in percent");
        if (percent.ends_with('%'))
            percent.pop_back();
        const Statement number{words.Line(), {{percent, false}}, false, {}};
        use.probability = WordReader(number).Integer("the probability in percent", 0, 100);
        return use;
    }

    int FindMouthSet(WordReader& words)
    {
        const std::string name = words.Name("a mouth set");
        const auto found = std::find_if(source_.mouthSets.begin(), source_.mouthSets.end(),
                                        [&](const MouthSet& set) { return set.name == name; });
        if (found == source_.mouthSets.end())
            words.Fail("no mouth set is called '" + name + "'");
        return static_cast<int>(found - source_.mouthSets.begin());
    }

    int SoundIndex(WordReader& words)
    {
        const std::string name = words.Any("a sound");
        const bool isFile = name.find('.') != std::string::npos;
        if (!isFile && !FindSound(source_, name))
            words.Fail("no sound is called '" + name + "'");
        auto& used = source_.usedSounds;
        const auto found = std::find(used.begin(), used.end(), name);
        const int index = static_cast<int>(found - used.begin());
        if (found == used.end())
            used.push_back(name);
        return index;
    }

    void AddFrame(WordReader& words, std::vector<Layer> layers)
    {
        if (frames_.size() >= kMostFrames)
            words.Fail("the animation has more than " + std::to_string(kMostFrames) + " frames");
        OpenFrame& added = frames_.emplace_back();
        added.frame.layers = std::move(layers);
        added.frame.duration = pace_;
        added.frame.line = words.Line();
        pendingLabels_ = 0;
    }

    // Durations go to all frames from begin on, the rest to the last.
    void ApplyOptions(WordReader& words, const FrameOptions& options, std::size_t begin)
    {
        for (std::size_t i = begin; i < frames_.size(); ++i)
            frames_[i].frame.duration = options.duration.value_or(frames_[i].frame.duration);
        OpenFrame& last = frames_.back();
        last.frame.mouths = options.mouths;
        last.frame.sound = options.sound;
        last.branches = options.branches;
        last.exit = options.exit;
        int together = 0;
        for (const LabelUse& branch : options.branches)
            together += branch.probability;
        if (options.branches.size() > kMostBranches || together > 100)
            words.Fail("a frame has at most three branches of together 100 %");
        if (options.mouths && last.frame.layers.empty())
            words.Fail("an empty frame has no mouths");
    }

    int FrameOf(const LabelUse& use) const
    {
        const auto found = labels_.find(use.label);
        if (found == labels_.end())
            throw SourceError(use.line, "no label of this animation is called '" + use.label + "'");
        return found->second;
    }

    void Finish()
    {
        for (OpenFrame& open : frames_) {
            for (const LabelUse& branch : open.branches)
                open.frame.branches.push_back({FrameOf(branch), branch.probability});
            if (open.exit)
                open.frame.exitFrame = FrameOf(*open.exit);
            animation_.frames.push_back(std::move(open.frame));
        }
        ApplySways();
        if (leaving_ == Leaving::Return)
            animation_.transition = Transition::ReturnAnimation;
        if (leaving_ == Leaving::Exits || leaving_ == Leaving::Backwards)
            animation_.transition = Transition::ExitBranches;
        if (leaving_ == Leaving::Backwards)
            MakeExitsBackwards();
    }

    // The way out leads from each frame to the one before, and from the first to an unseen last one.
    void MakeExitsBackwards()
    {
        for (const SourceFrame& frame : animation_.frames) {
            if (frame.exitFrame || !frame.branches.empty())
                throw SourceError(frame.line, "with 'leave backwards' no frame has branches or an exit");
        }
        const int end = static_cast<int>(animation_.frames.size());
        for (int i = 0; i < end; ++i)
            animation_.frames[static_cast<std::size_t>(i)].exitFrame = i == 0 ? end : i - 1;
        SourceFrame& unseen = animation_.frames.emplace_back();
        unseen.duration = 0;
        unseen.line = animation_.line;
    }

    void ApplySways()
    {
        int now = 0; // hundredths of a second since the start
        for (SourceFrame& frame : animation_.frames) {
            for (const Sway& sway : sways_) {
                // Exactly at rest after each half period: a sine that just misses 0 makes a new picture.
                const bool atRest = 2 * now % sway.period == 0;
                const double swing = atRest ? 0 : std::sin(2 * std::numbers::pi * now / sway.period);
                for (Layer& layer : frame.layers) {
                    PartStance& part = layer.stance.parts[static_cast<std::size_t>(sway.part)];
                    part.rotate += sway.rotate * swing;
                    part.move.x += sway.move.x * swing;
                    part.move.y += sway.move.y * swing;
                }
            }
            now += frame.duration;
        }
    }

    const PoseTable& poses_;
    CharacterSource& source_;
    SourceAnimation animation_;
    std::vector<OpenFrame> frames_;
    std::map<std::string, int> labels_; // with their @, to the frame that follows
    int pendingLabels_ = 0;             // that no frame follows yet
    std::vector<Sway> sways_;
    int pace_ = 10; // hundredths of a second
    Leaving leaving_ = Leaving::Nothing;
};

} // namespace

void ParseAnimation(const Statement& statement, const PoseTable& poses, CharacterSource& source)
{
    SourceAnimation animation = AnimationParser(poses, source).Parse(statement);
    for (const SourceAnimation& other : source.animations) {
        if (SameName(other.name, animation.name))
            throw SourceError(statement.line, "there is an animation '" +
                                                  agent::acs::Utf8FromWide(animation.name) + "' already");
    }
    source.animations.push_back(std::move(animation));
}

} // namespace voxtrel::acsc
