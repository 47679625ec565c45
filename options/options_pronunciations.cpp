#include "options/options.h"
#include "options/pronunciation_file.h"
#include "settings/file_path.h"
#include "settings/number_conversions.h"
#include "settings/setting_keys.h"
#include "settings/string_numbers.h"
#include "textreader/text_file.h"

#include <fstream>

// The page of the pronunciations.

namespace voxtrel::options {

namespace numbers = settings::strings;

void Options::LoadPronunciations()
{
    pronunciations_.New();
    // Meant as it is, though the setting has nothing to do with words; it is usually empty.
    pronunciations_.written = services_.shared.Agent_User_Tags;
    pronunciations_.Refill();
    ShowPronunciations();
}

void Options::ShowPronunciations()
{
    form_.SetPronunciation({pronunciations_.written, pronunciations_.spoken});
    form_.FillPronunciations(pronunciations_.Entries());
}

void Options::List1_Click()
{
    const std::optional<std::size_t> selected = form_.SelectedPronunciation();
    if (!selected)
        return;
    pronunciations_.Click(*selected);
    form_.SetPronunciation({pronunciations_.written, pronunciations_.spoken});
}

void Options::pron_add_Click()
{
    const PronunciationTexts texts = form_.Pronunciation();
    if (texts.written.empty())
        return;
    pronunciations_.written = texts.written;
    pronunciations_.spoken = texts.spoken;
    pronunciations_.Add();
    ShowPronunciations();
}

void Options::Command2_Click()
{
    if (!pronunciations_.Selected())
        return;
    pronunciations_.Delete();
    ShowPronunciations();
}

void Options::Command4_Click()
{
    pronunciations_.New();
    form_.SetPronunciation({});
}

void Options::cmdSpeak_Click()
{
    const settings::SharedSettings& shared = services_.shared;
    if (shared.character == nullptr)
        return;
    using settings::FormatNumber;
    agent::Ignore(shared.character->Speak(shared.SAPITags + L"\\Spd=" + FormatNumber(shared.Speed) +
                                          L"\\\\Pit=" + FormatNumber(shared.Pitch) + L"\\\\Vol=" +
                                          FormatNumber(shared.Volume) + L"\\  " + shared.VoiceType + L" " +
                                          form_.Pronunciation().spoken));
}

void Options::ImportPronunciations(const std::wstring& path)
{
    const textreader::LoadedText loaded = textreader::LoadTextFile(path);
    if (!loaded.error.empty()) {
        services_.messages.ShowExclamation(loaded.error);
        return;
    }
    const ParsedPronunciations parsed = ParsePronunciations(loaded.text);
    {
        const settings::SettingsChanges together(services_.store);
        for (const auto& [written, spoken] : parsed.pairs)
            pronunciationList_.Save(written, spoken);
    }
    pronunciations_.Refill();
    form_.FillPronunciations(pronunciations_.Entries());
    std::wstring report = Counted(numbers::kImported, parsed.pairs.size());
    if (parsed.skipped > 0)
        report += L"\n" + Counted(numbers::kLinesSkipped, parsed.skipped);
    services_.messages.ShowInformation(report);
}

void Options::ExportPronunciations(const std::wstring& path)
{
    const PronunciationPairs pairs = services_.store.GetAllSettings(settings::kPronunciationSection);
    const FormattedPronunciations formatted = FormatPronunciations(pairs);
    std::ofstream file(settings::ToPath(path), std::ios::binary | std::ios::trunc);
    file.write(formatted.bytes.data(), static_cast<std::streamsize>(formatted.bytes.size()));
    file.close();
    if (!file) {
        services_.messages.ShowExclamation(
            settings::FormatResString(services_.strings.Text(numbers::kFileNotWritten), path));
        return;
    }
    std::wstring report = Counted(numbers::kExported, pairs.size() - formatted.skipped);
    if (formatted.skipped > 0)
        report += L"\n" + Counted(numbers::kEntriesSkipped, formatted.skipped);
    services_.messages.ShowInformation(report);
}

std::wstring Options::Counted(int number, std::size_t count) const
{
    return settings::FormatResString(services_.strings.Text(number), settings::FormatNumber(count));
}

} // namespace voxtrel::options
