#include "options_fixture.h"

#include <sstream>

namespace voxtrel::options {
namespace {

class PronunciationsPage : public OptionsTest {
protected:
    PronunciationsPage()
    {
        Save(L"modify", L"world", L"wurld");
        Save(L"modify", L"Voxtrel", L"vocks trell");
    }

    void Click(std::size_t entry)
    {
        form.pronunciations.selected = entry;
        options.List1_Click();
    }

    std::string ReadFile(const std::filesystem::path& name)
    {
        std::ifstream file(name, std::ios::binary);
        std::ostringstream all;
        all << file.rdbuf();
        return all.str();
    }

    const std::filesystem::path list = path / "list.txt";
};

TEST_F(PronunciationsPage, ListShowsTheWordsAsTheyAreStored)
{
    Load();
    EXPECT_EQ(form.pronunciations.entries, (Texts{L"world", L"Voxtrel"}));
}

TEST_F(PronunciationsPage, ClickedEntryStandsInTheBoxes)
{
    Load();
    Click(1);
    EXPECT_EQ(form.pronunciation.written, L"Voxtrel");
    EXPECT_EQ(form.pronunciation.spoken, L"vocks trell");
}

TEST_F(PronunciationsPage, ClickBesideTheEntriesChangesNothing)
{
    Load();
    form.pronunciation = {L"as", L"typed"};
    options.List1_Click();
    EXPECT_EQ(form.pronunciation.written, L"as");
}

TEST_F(PronunciationsPage, AddingStoresAtOnceAndRefills)
{
    Load();
    form.pronunciation = {L"SQL", L"sequel"};
    options.pron_add_Click();
    options.cancel_but_Click();
    EXPECT_EQ(Stored(L"modify", L"sql"), L"sequel");
    EXPECT_EQ(form.pronunciations.entries, (Texts{L"world", L"Voxtrel", L"SQL"}));
}

TEST_F(PronunciationsPage, AddingAWordOfTheListChangesIt)
{
    Load();
    Click(0);
    form.pronunciation.spoken = L"werld";
    options.pron_add_Click();
    EXPECT_EQ(Stored(L"modify", L"world"), L"werld");
    EXPECT_EQ(form.pronunciations.entries.size(), 2u);
}

TEST_F(PronunciationsPage, NothingIsStoredUnderNoWord)
{
    Load();
    form.pronunciation = {L"", L"nothing"};
    options.pron_add_Click();
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(PronunciationsPage, DeletingTakesTheSelectedEntryAndEmptiesTheBoxes)
{
    Load();
    Click(0);
    options.Command2_Click();
    EXPECT_EQ(Stored(L"modify", L"world"), L"nothing");
    EXPECT_EQ(form.pronunciations.entries, (Texts{L"Voxtrel"}));
    EXPECT_TRUE(form.pronunciation.written.empty());
    EXPECT_TRUE(form.pronunciation.spoken.empty());
}

TEST_F(PronunciationsPage, DeletingWithoutASelectionDeletesNothing)
{
    Load();
    form.pronunciation = {L"world", L"wurld"};
    options.Command2_Click();
    EXPECT_EQ(Stored(L"modify", L"world"), L"wurld");
    EXPECT_EQ(form.pronunciation.written, L"world");
}

TEST_F(PronunciationsPage, NewEmptiesTheBoxesOnly)
{
    Load();
    Click(0);
    options.Command4_Click();
    EXPECT_TRUE(form.pronunciation.written.empty());
    EXPECT_EQ(Stored(L"modify", L"world"), L"wurld");
}

TEST_F(PronunciationsPage, HearSpeaksTheSecondBoxAsTyped)
{
    Load();
    shared.SAPITags = L"\\Ctx=\"E-mail\"\\";
    shared.VoiceType = L"\\chr=\"Whisper\"\\";
    shared.Speed = 120;
    shared.Pitch = 90;
    shared.Volume = 20000;
    form.pronunciation = {L"x", L"world of words"}; // not looked up itself
    options.cmdSpeak_Click();
    EXPECT_EQ(Character().utterances, (Texts{L"\\Ctx=\"E-mail\"\\\\Spd=120\\\\Pit=90\\\\Vol=20000\\  "
                                             L"\\chr=\"Whisper\"\\ world of words"}));
    EXPECT_TRUE(shared.PendingSpeech.empty());
}

TEST_F(PronunciationsPage, ExportedListIsImportedAsItWas)
{
    Save(L"modify", L"caf\u00E9", L"kaff ay");
    Save(L"modify", L" ", L"space");
    Save(L"modify", L"tab\tbed", L"no line can hold this");
    Load();
    options.ExportPronunciations(settings::FromPath(list));
    EXPECT_EQ(ReadFile(list), "world\twurld\nVoxtrel\tvocks trell\ncaf\xC3\xA9\tkaff ay\n \tspace\n");
    EXPECT_EQ(log.Calls().back(), L"ShowInformation exported 4\nentries skipped 1");

    store.DeleteSection(L"modify");
    options.ImportPronunciations(settings::FromPath(list));
    EXPECT_EQ(form.pronunciations.entries, (Texts{L"world", L"Voxtrel", L"caf\u00E9", L" "}));
    EXPECT_EQ(Stored(L"modify", L"caf\u00E9"), L"kaff ay");
    EXPECT_EQ(log.Calls().back(), L"ShowInformation imported 4");
}

TEST_F(PronunciationsPage, ImportAddsToTheListAndCountsWhatItLeavesOut)
{
    std::ofstream(list, std::ios::binary)
        << "\xEF\xBB\xBFWORLD\twerld\r\nno tab here\r\n\r\n\tno word\r\nnew\tnoo\r\n";
    Load();
    options.ImportPronunciations(settings::FromPath(list));
    EXPECT_EQ(Stored(L"modify", L"world"), L"werld");
    EXPECT_EQ(Stored(L"modify", L"new"), L"noo");
    EXPECT_EQ(form.pronunciations.entries.size(), 3u);
    EXPECT_EQ(log.Calls().back(), L"ShowInformation imported 2\nlines skipped 2");
}

TEST_F(PronunciationsPage, FileThatCannotBeReadIsTold)
{
    Load();
    options.ImportPronunciations(settings::FromPath(path / "missing.txt"));
    EXPECT_EQ(log.Calls().back().substr(0, 15), L"ShowExclamation");
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(PronunciationsPage, FileThatCannotBeWrittenIsTold)
{
    Load();
    const std::wstring file = settings::FromPath(path / "no folder" / "list.txt");
    options.ExportPronunciations(file);
    EXPECT_EQ(log.Calls().back(), L"ShowExclamation not written " + file);
}

} // namespace
} // namespace voxtrel::options
