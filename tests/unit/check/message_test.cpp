#include "check/message.h"

#include <gtest/gtest.h>

#include <set>

using namespace Orvane;

TEST(Message, fillsTheGapsOfTextAndHint) {
    const Diagnostic diagnostic =
        makeDiagnostic(MessageId::unknownProperty, {3, 7}, {"txt", "button"});
    EXPECT_EQ(diagnostic.text, "a button has no property 'txt'");
    EXPECT_EQ(diagnostic.range, (ByteRange{3, 7}));
}

TEST(Message, isFoundById) {
    EXPECT_EQ(findMessage("unknown-function"), MessageId::unknownFunction);
    EXPECT_EQ(findMessage("unknown-unknown"), std::nullopt);
}

TEST(Message, hasAnIdOfItsOwnATextAndAHint) {
    std::set<std::string_view> ids;
    for (const Message& message : messages) {
        EXPECT_TRUE(ids.insert(message.id).second) << message.id;
        EXPECT_FALSE(message.text.empty()) << message.id;
        EXPECT_FALSE(message.hint.empty()) << message.id;
    }
}
