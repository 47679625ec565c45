#include "agent/control_choice.h"

#include "fakes/fake_character.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace voxtrel::agent {
namespace {

using Names = std::vector<std::string>;

class ChooseControlTest : public testing::Test {
protected:
    MadeControl Choose(CharacterServer wanted)
    {
        return ChooseControl(wanted,
                             {.embedded =
                                  [this] {
                                      auto made = std::make_unique<tests::FakeControl>(embeddedLog);
                                      embedded = made.get();
                                      return made;
                                  },
                              .systemIsRegistered = [this] { return registered; },
                              .system = [this] { return MakeSystem(); },
                              .chosen = [this](std::string_view server) { chosen.emplace_back(server); }});
    }

    MadeControl MakeSystem()
    {
        ++timesAsked;
        if (!systemWorks)
            return {nullptr, Result::Failure(ErrorCode::SystemControlMissing, L"It is broken.")};
        auto made = std::make_unique<tests::FakeControl>(systemLog);
        system = made.get();
        system->missingFiles = {L"unreadable.acs", L"missing.acs"};
        return {std::move(made), Result::Success()};
    }

    bool registered = true;
    bool systemWorks = true;
    int timesAsked = 0;
    Names chosen;
    tests::CallLog embeddedLog;
    tests::CallLog systemLog;
    tests::FakeControl* embedded = nullptr;
    tests::FakeControl* system = nullptr;
};

TEST_F(ChooseControlTest, TakesTheSystemsControlWhereItIsRegistered)
{
    const MadeControl made = Choose(CharacterServer::WhatIsThere);
    ASSERT_TRUE(made.control);
    EXPECT_TRUE(made.control->Load(L"genie", L"genie.acs").Ok());
    EXPECT_EQ(systemLog.Calls(), std::vector<std::wstring>{L"Load genie genie.acs"});
    EXPECT_EQ(chosen, Names{"system"});
    EXPECT_EQ(embedded, nullptr);
}

TEST_F(ChooseControlTest, TakesOurOwnWhereNoneIsRegistered)
{
    registered = false;
    EXPECT_TRUE(Choose(CharacterServer::WhatIsThere).control);
    EXPECT_EQ(chosen, Names{"embedded"});
    EXPECT_EQ(timesAsked, 0);
}

TEST_F(ChooseControlTest, TakesOurOwnWithoutAWordWhenTheSystemsCannotBeMade)
{
    systemWorks = false;
    const MadeControl made = Choose(CharacterServer::WhatIsThere);
    EXPECT_TRUE(made.control);
    EXPECT_TRUE(made.result.Ok());
    EXPECT_EQ(chosen, Names{"embedded"});
}

TEST_F(ChooseControlTest, EmbeddedDoesNotEvenLookForTheSystemsControl)
{
    EXPECT_TRUE(Choose(CharacterServer::Embedded).control);
    EXPECT_EQ(timesAsked, 0);
    EXPECT_EQ(chosen, Names{"embedded"});
}

TEST_F(ChooseControlTest, SystemIsTriedThoughItIsNotRegistered)
{
    registered = false;
    EXPECT_TRUE(Choose(CharacterServer::System).control);
    EXPECT_EQ(chosen, Names{"system"});
}

TEST_F(ChooseControlTest, SystemThatCannotBeMadeFailsWithItsOwnWords)
{
    systemWorks = false;
    const MadeControl made = Choose(CharacterServer::System);
    EXPECT_FALSE(made.control);
    EXPECT_EQ(made.result.description, L"It is broken.");
    EXPECT_EQ(chosen, Names{});
}

TEST_F(ChooseControlTest, CharacterThatTheSystemsControlCannotLoadIsLoadedIntoOurOwn)
{
    const MadeControl made = Choose(CharacterServer::WhatIsThere);
    ControlEvents events;
    made.control->SetEvents(&events);
    EXPECT_TRUE(made.control->Load(L"genie", L"unreadable.acs").Ok());
    ASSERT_TRUE(embedded);
    EXPECT_EQ(made.control->Find(L"Genie"), embedded->FindFake(L"genie"));
    EXPECT_EQ(embedded->events, &events);
    EXPECT_EQ(chosen, (Names{"system", "embedded"}));

    EXPECT_TRUE(made.control->Unload(L"genie").Ok());
    EXPECT_EQ(embedded->LoadedCount(), 0u);
    EXPECT_EQ(made.control->Find(L"genie"), nullptr);
}

TEST_F(ChooseControlTest, FileThatNeitherCanLoadFailsAsOurOwnSaysIt)
{
    const MadeControl made = Choose(CharacterServer::WhatIsThere);
    EXPECT_TRUE(made.control->Load(L"one", L"unreadable.acs").Ok());
    embedded->missingFiles.insert(L"missing.acs");
    EXPECT_EQ(made.control->Load(L"genie", L"missing.acs").code, ErrorCode::FileNotFound);
}

TEST_F(ChooseControlTest, LoadedCharacterIsNotLoadedASecondTimeIntoTheOther)
{
    const MadeControl made = Choose(CharacterServer::WhatIsThere);
    EXPECT_TRUE(made.control->Load(L"genie", L"genie.acs").Ok());
    EXPECT_EQ(made.control->Load(L"GENIE", L"genie.acs").code, ErrorCode::CharacterAlreadyLoaded);
    EXPECT_TRUE(made.control->Load(L"other", L"unreadable.acs").Ok());
    EXPECT_EQ(made.control->Load(L"Other", L"genie.acs").code, ErrorCode::CharacterAlreadyLoaded);
    EXPECT_EQ(system->LoadedCount(), 1u);
    EXPECT_EQ(embedded->LoadedCount(), 1u);
}

TEST_F(ChooseControlTest, ForcedSystemDoesNotFallBackToOurOwn)
{
    const MadeControl made = Choose(CharacterServer::System);
    EXPECT_EQ(made.control->Load(L"genie", L"unreadable.acs").code, ErrorCode::FileNotFound);
    EXPECT_EQ(embedded, nullptr);
}

} // namespace
} // namespace voxtrel::agent
