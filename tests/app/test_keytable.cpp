// The table of keys: which row a pressed key finds, and how the table is printed.
#include <gtest/gtest.h>

#include <set>

#include "keytable.h"
#include "rows.h"

using namespace sorvane;

namespace {
TEST(KeyTableTest, EveryKeyHasOneRow) {
    std::set<int> seen;
    for (const KeyRow& row : keyTable())
        for (const QKeyCombination key : row.keys)
            if (key.key() != Qt::Key_unknown) {
                EXPECT_TRUE(seen.insert(key.toCombined()).second) << keyTexts(row).toStdString();
                EXPECT_EQ(keyRowOf(key), &row);
            }
    EXPECT_GE(seen.size(), 30U);
    EXPECT_EQ(keyRowOf(Qt::Key_unknown), nullptr);
}

TEST(KeyTableTest, OnlyModifiersThatTypeACharacterAreOverlooked) {
    for (const auto& [pressed, keys] : Rows<QKeyCombination, const char*>{
             {Qt::SHIFT | Qt::Key_Question, "F1, ?"},                              // as typed on an American keyboard
             {QKeyCombination(Qt::GroupSwitchModifier, Qt::Key_BracketLeft), "["}, // on a German one
             {Qt::SHIFT | Qt::Key_1, "1"},                                         // on a French one
             {QKeyCombination(Qt::KeypadModifier, Qt::Key_Left), "Left"},
             {Qt::SHIFT | Qt::Key_Left, "Shift+Left"},
             {Qt::SHIFT | Qt::Key_K, ""},
             {Qt::CTRL | Qt::Key_I, ""},
             {Qt::ALT | Qt::Key_J, ""},
             {Qt::CTRL | Qt::SHIFT | Qt::Key_Left, ""},
             {Qt::Key_Up, ""}}) {
        const KeyRow* const found = keyRowOf(pressed);
        EXPECT_EQ(found == nullptr ? "" : keyTexts(*found).toStdString(), keys) << pressed.toCombined();
    }
}

TEST(KeyTableTest, PrintsSectionsWithTables) {
    const QString text = keyTableAsMarkdown();
    EXPECT_TRUE(text.startsWith("### Playback\n\n| key | what it does |\n|---|---|\n| `Space` | play forward"));
    for (const char* const part :
         {"\n\n### Loop\n\n| key |", "\n| `\\` | loop", "\n| `F1`, `?` | list of the keys |\n"})
        EXPECT_TRUE(text.contains(part)) << part;
}
} // namespace
