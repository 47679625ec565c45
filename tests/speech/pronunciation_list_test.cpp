#include "speech/pronunciation_list.h"

#include "settings/memory_backend.h"

#include <gtest/gtest.h>

namespace voxtrel::speech {
namespace {

class PronunciationTest : public testing::Test {
protected:
    PronunciationTest() { store.SetApplicationName(L"Orvella"); }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    PronunciationList list{store};
    PronunciationEditor editor{store};
};

using PronunciationListTest = PronunciationTest;
using PronunciationEditorTest = PronunciationTest;

TEST_F(PronunciationListTest, LivesInTheSettings)
{
    list.Save(L"Voxtrel", L"vox trel");
    EXPECT_EQ(store.GetSetting(L"modify", L"voxtrel"), L"vox trel");
    EXPECT_EQ(list.Find(L"VOXTREL"), L"vox trel");
    store.SaveSetting(L"modify", L"VOXTREL", L"voks trel");
    EXPECT_EQ(list.Find(L"voxtrel"), L"voks trel");
    list.Delete(L"voxTREL");
    EXPECT_EQ(list.Find(L"Voxtrel"), L"");
}

TEST_F(PronunciationListTest, FindsEachOfManyWords)
{
    for (int i = 0; i < 3000; ++i)
        list.Save(L"Word" + std::to_wstring(i), L"spoken " + std::to_wstring(i));
    for (int i = 0; i < 3000; ++i)
        EXPECT_EQ(list.Find(L"wORD" + std::to_wstring(i)), L"spoken " + std::to_wstring(i));
    EXPECT_EQ(list.Find(L"word3000"), L"");
    EXPECT_EQ(list.Find(L""), L"");
}

TEST_F(PronunciationEditorTest, AddsAndRefills)
{
    editor.written = L"Zeta";
    editor.spoken = L"zee ta";
    editor.Add();
    editor.written = L"alpha";
    editor.spoken = L"al fa";
    editor.Add();
    EXPECT_EQ(editor.Entries(), (std::vector<std::wstring>{L"Zeta", L"alpha"}));
    EXPECT_EQ(editor.written, L"alpha");
    EXPECT_EQ(editor.spoken, L"al fa");
    EXPECT_EQ(store.GetSetting(L"modify", L"zeta"), L"zee ta");
}

TEST_F(PronunciationEditorTest, AddsOverAWordInOtherCapitals)
{
    store.SaveSetting(L"modify", L"Zeta", L"old");
    editor.written = L"ZETA";
    editor.spoken = L"new";
    editor.Add();
    EXPECT_EQ(editor.Entries(), (std::vector<std::wstring>{L"Zeta"}));
    EXPECT_EQ(store.GetSetting(L"modify", L"Zeta"), L"new");
}

TEST_F(PronunciationEditorTest, ShowsAClickedEntryAsItIsStoredNow)
{
    store.SaveSetting(L"modify", L"one", L"wun");
    store.SaveSetting(L"modify", L"two", L"too");
    editor.Refill();
    store.SaveSetting(L"modify", L"two", L"tew");
    editor.Click(1);
    EXPECT_EQ(editor.written, L"two");
    EXPECT_EQ(editor.spoken, L"tew");
    EXPECT_EQ(editor.Selected(), 1u);
    editor.Click(2);
    EXPECT_EQ(editor.Selected(), 1u);
}

TEST_F(PronunciationEditorTest, DeletesTheSelectedEntryAndEmptiesTheBoxes)
{
    store.SaveSetting(L"modify", L"one", L"wun");
    store.SaveSetting(L"modify", L"two", L"too");
    editor.Refill();
    editor.Click(0);
    editor.written = L"two"; // the selected entry counts, not the box
    editor.Delete();
    EXPECT_EQ(editor.Entries(), (std::vector<std::wstring>{L"two"}));
    EXPECT_EQ(editor.written, L"");
    EXPECT_EQ(editor.spoken, L"");
    EXPECT_FALSE(editor.Selected().has_value());
}

TEST_F(PronunciationEditorTest, DeletesNothingWithoutASelection)
{
    store.SaveSetting(L"modify", L"one", L"wun");
    editor.Refill();
    editor.written = L"one";
    editor.Delete();
    EXPECT_EQ(store.GetSetting(L"modify", L"one"), L"wun");
    EXPECT_EQ(editor.written, L"");
}

TEST_F(PronunciationEditorTest, NewEmptiesTheBoxesOnly)
{
    store.SaveSetting(L"modify", L"one", L"wun");
    editor.Refill();
    editor.Click(0);
    editor.New();
    EXPECT_EQ(editor.written, L"");
    EXPECT_EQ(editor.spoken, L"");
    EXPECT_EQ(editor.Entries().size(), 1u);
    EXPECT_EQ(editor.Selected(), 0u);
}

} // namespace
} // namespace voxtrel::speech
