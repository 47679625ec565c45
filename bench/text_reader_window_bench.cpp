// The Text Reader's window on a long text: what moving the highlight costs, and opening against the bare control
// with the same bytes. text_reader_window_bench [MEGABYTES (5)]; prints one line a measurement, needs a display.

#include "textreader/text_file.h"
#include "textreader/text_reader.h"
#include "textreader/view/wx_rich_text_box.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace voxtrel::textreader;
using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

std::string Prose(double megabytes)
{
    std::string text;
    while (static_cast<double>(text.size()) < megabytes * 1000000)
        text += "The voice reads along with a person, and every word is shown before somebody hears it. It "
                "moves.\n";
    return text;
}

double Median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
}

class BenchApp final : public wxApp {
public:
    bool OnInit() override { return true; }

    int OnRun() override
    {
        wxEventLoop loop;
        const wxEventLoopActivator active(&loop);
        auto* frame = new wxFrame(nullptr, wxID_ANY, "bench", wxDefaultPosition, wxSize(600, 500));
        frame->Show();
        Yield(true);
        const double megabytes = argc > 1 ? std::atof(argv[1]) : 5;
        std::printf("a text of %.1f MB\n", megabytes);
        const std::string bytes = Prose(megabytes);
        MeasureOpening(*frame, bytes);
        MeasureHighlight(*frame, bytes);
        frame->Destroy();
        return 0;
    }

private:
    void MeasureOpening(wxFrame& frame, const std::string& bytes)
    {
        auto* bare = new wxTextCtrl(&frame, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                    wxTE_MULTILINE | wxTE_RICH2);
        WxRichTextBox box(&frame, [](const TextEdit&) {});
        bare->SetSize(frame.GetClientSize());
        box.Control().SetSize(frame.GetClientSize());
        std::vector<double> bareTimes;
        std::vector<double> ourTimes;
        for (int i = 0; i < 3; ++i) {
            Clock::time_point begin = Clock::now();
            bare->ChangeValue(wxString::FromUTF8(bytes));
            bareTimes.push_back(MillisecondsSince(begin));
            begin = Clock::now();
            box.SetText(std::move(DecodeText(bytes).text));
            ourTimes.push_back(MillisecondsSince(begin));
        }
        std::printf("open: bare control %.1f ms, decoded and shown %.1f ms\n", Median(bareTimes),
                    Median(ourTimes));
        bare->Destroy();
        box.Control().Destroy();
    }

    void MeasureHighlight(wxFrame& frame, const std::string& bytes)
    {
        WxRichTextBox box(&frame, [](const TextEdit&) {});
        box.Control().SetSize(frame.GetClientSize());
        box.SetText(DecodeText(bytes).text);
        Yield(true);
        const auto size = static_cast<int>(box.Text().size());
        for (const int percent : {1, 50, 99}) {
            int place = size / 100 * percent;
            std::vector<double> times;
            for (int word = 0; word < 100; ++word) {
                const Clock::time_point begin = Clock::now();
                box.SetSelStart(place);
                box.SetSelLength(5);
                box.SetSelColor(0xFF0000);
                place += 6;
                box.SetSelStart(place);
                box.SetSelLength(5);
                box.SetSelColor(0x0000FF);
                box.Settle();
                times.push_back(MillisecondsSince(begin));
                Yield(true);
            }
            const double slowest = *std::max_element(times.begin() + 1, times.end());
            std::printf("highlight at %d %%: median %.3f ms a word, slowest %.3f ms\n", percent,
                        Median(times), slowest);
        }
    }
};

} // namespace

wxIMPLEMENT_APP_NO_MAIN(BenchApp);

int main(int argc, char** argv)
{
    std::setvbuf(stdout, nullptr, _IONBF, 0); // a run that takes too long still tells what it knows
    return wxEntry(argc, argv);
}
