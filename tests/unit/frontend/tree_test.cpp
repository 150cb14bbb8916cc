// The tree's nodes and the arena that holds them.
#include "frontend/syntax_tree.h"
#include "tree_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Orvane {
namespace {

using Testing::textOf;

TEST(Arena, KeepsCopiesOfTexts) {
    Arena arena;
    std::string source = "speed";
    const std::string_view kept = arena.text(source);
    source = "other";
    EXPECT_EQ(kept, "speed");
    EXPECT_EQ(arena.text(""), "");
}

struct Owning {
    static constexpr bool holdsOnlyArenaMemory = false;
    explicit Owning(int& ends_) : ends(ends_) {}
    ~Owning() { ++ends; }
    int& ends;
};

struct Plain {
    static constexpr bool holdsOnlyArenaMemory = true;
    explicit Plain(int& ends_) : ends(ends_) {}
    ~Plain() { ++ends; }
    int& ends;
};

TEST(Arena, DestroysOnlyWhatOwnsOtherMemory) {
    int owningEnds = 0;
    int plainEnds = 0;
    {
        Arena arena;
        arena.make<Owning>(owningEnds);
        arena.make<Plain>(plainEnds);
        EXPECT_EQ(owningEnds, 0);
    }
    EXPECT_EQ(owningEnds, 1);
    EXPECT_EQ(plainEnds, 0);
}

TEST(Arena, ListsGrowInIt) {
    Arena arena;
    List<int> numbers(arena);
    for (int number = 0; number < 10'000; ++number) numbers.push_back(number);
    EXPECT_EQ(numbers[9'999], 9'999);
    const List<int> moved = std::move(numbers);
    EXPECT_EQ(moved.size(), 10'000U);
}

// The right side of an assignment is the deepest tree that code can build; its end must not
// recurse.
TEST(Arena, DeepTreesAreReleasedWithoutRecursion) {
    Arena arena;
    uptr<Expr> tree = arena.make<LiteralExpr>(Value("a text that is too long to be kept in place"));
    for (int count = 0; count < 1'000'000; ++count)
        tree = arena.make<BinaryExpr>(arena.make<IdentifierExpr>("a"), "=", std::move(tree));
    EXPECT_NE(nodeCast<BinaryExpr>(tree), nullptr);
}

TEST(NodeCast, ComparesTheExactClass) {
    Arena arena;
    const uptr<Expr> name = arena.make<IdentifierExpr>("speed");
    ASSERT_NE(nodeCast<IdentifierExpr>(name), nullptr);
    EXPECT_EQ(nodeCast<IdentifierExpr>(name)->name, "speed");
    EXPECT_EQ(nodeCast<LiteralExpr>(name), nullptr);
    EXPECT_EQ(nodeCast<IdentifierExpr>(static_cast<const Expr*>(nullptr)), nullptr);
    const Expr* constant = name.get();
    const IdentifierExpr* found = nodeCast<IdentifierExpr>(constant);
    EXPECT_EQ(found->name, "speed");
}

TEST(Nodes, TrailingFieldsStartEmpty) {
    Arena arena;
    const auto range = arena.make<RangeExpr>(nullptr, nullptr);
    EXPECT_EQ(range->step, nullptr);
    EXPECT_TRUE(range->label.empty());
    const auto each = arena.make<ListComprehensionExpr>(nullptr, "v", nullptr);
    EXPECT_EQ(each->condition, nullptr);
    EXPECT_TRUE(arena.make<ObjectCtorExpr>(arena, "P")->fields.empty());
}

TEST(Nodes, CallsHaveANameOrACallee) {
    Arena arena;
    const auto named = arena.make<CallExpr>(arena, std::string_view("f"));
    EXPECT_EQ(named->name, "f");
    EXPECT_EQ(named->callee, nullptr);
    EXPECT_TRUE(named->args.empty());
    const auto other = arena.make<CallExpr>(arena, arena.make<IdentifierExpr>("g"));
    EXPECT_TRUE(other->name.empty());
    EXPECT_EQ(textOf(other.get()), "(apply g)");
}

TEST(Nodes, LiteralsKeepTheirOwnValue) {
    Arena arena;
    Value value("first");
    const auto literal = arena.make<LiteralExpr>(value);
    value = Value("second");
    EXPECT_EQ(literal->value.asString(), "first");
}

TEST(Arena, AlignsNodesBehindTexts) {
    Arena arena;
    for (int count = 0; count < 1000; ++count) {
        arena.text("abc");
        const auto node = arena.make<IdentifierExpr>("x");
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(node.get()) % alignof(IdentifierExpr), 0U);
    }
}

TEST(Arena, TakesWhatIsLargerThanABlock) {
    Arena arena;
    const std::string large(std::size_t{40} << 20, 'x');
    const std::string_view kept = arena.text(large);
    const std::string_view behind = arena.text("behind");
    EXPECT_EQ(kept, large);
    EXPECT_EQ(behind, "behind");
}

constexpr std::size_t firstBlock = 4096; // bytes

TEST(Arena, GoesOnInMemoryThatItMayReuse) {
    std::vector<std::uint64_t> words(100);
    const auto isInside = [&](const void* memory) {
        return memory >= words.data() && memory < words.data() + words.size();
    };
    Arena arena;
    EXPECT_FALSE(isInside(arena.allocateBytes(8)));
    arena.reuse(words.data(), 400);
    EXPECT_FALSE(isInside(arena.allocateBytes(firstBlock - 8))); // the block has room left
    EXPECT_TRUE(isInside(arena.allocateBytes(8)));
    arena.reuse(words.data() + 50, 400); // the piece behind the current one
    EXPECT_TRUE(isInside(arena.text(std::string(300, 'x')).data()));
    EXPECT_TRUE(isInside(arena.text(std::string(100, 'y')).data()));
    EXPECT_FALSE(isInside(arena.text(std::string(400, 'z')).data()));
}

// An arena that needs memory next.
class FullArena : public testing::Test {
protected:
    FullArena() { arena.allocateBytes(firstBlock); }

    void reuse(std::size_t word, std::size_t count) { arena.reuse(&words[word], count * 8); }
    void expectNextAt(std::size_t word, std::size_t count) {
        EXPECT_EQ(arena.allocateBytes(count * 8), static_cast<void*>(&words[word]));
    }

    std::vector<std::uint64_t> words = std::vector<std::uint64_t>(100);
    Arena arena;
};

TEST_F(FullArena, PiecesThatFollowOneAnotherMakeOne) {
    reuse(0, 10);
    reuse(10, 90);
    expectNextAt(0, 100);
}

TEST_F(FullArena, GoesOnInTheLastOfSeveralPieces) {
    reuse(0, 10);
    reuse(20, 10);
    expectNextAt(20, 10);
}

// A piece waits for what fits into it.
TEST_F(FullArena, APieceIsKeptWhileWhatComesIsLarger) {
    reuse(0, 100);
    arena.allocateBytes(2 * firstBlock); // fills the next block
    expectNextAt(0, 100);
}

// What needs much memory at once does not end the use of a piece.
TEST_F(FullArena, ALargeTextLeavesTheRestOfItsPieceInUse) {
    reuse(0, 100);
    expectNextAt(0, 1);
    arena.allocateBytes(std::size_t{1} << 20);
    expectNextAt(1, 1);
}

// A node that stands in the memory of an owner ends before it.
TEST(Arena, OwnersEndBehindTheNodes) {
    struct Memory {
        explicit Memory(int& ends_) : words(10), ends(&ends_) {}
        Memory(Memory&& other) noexcept
            : words(std::move(other.words)), ends(std::exchange(other.ends, nullptr)) {}
        ~Memory() {
            if (ends) {
                EXPECT_EQ(*ends, 1);
            }
        }
        std::vector<std::uint64_t> words;
        int* ends;
    };
    int ends = 0;
    {
        Arena arena;
        Memory memory(ends);
        arena.reuse(memory.words.data(), 80);
        const auto node = arena.make<Owning>(ends);
        EXPECT_EQ(static_cast<void*>(node.get()), memory.words.data());
        arena.keep(std::move(memory));
    }
    EXPECT_EQ(ends, 1);
}

TEST(Arena, DestroysLiteralsThatOwnTheirText) {
    Arena arena;
    const auto literal = arena.make<LiteralExpr>(Value(std::string(1000, 'x')));
    EXPECT_TRUE(literal->ownsMemory());
    EXPECT_FALSE(arena.make<LiteralExpr>(Value(1))->ownsMemory());
}

TEST(List, CanHoldCopiesOfItsOwnItems) {
    Arena arena;
    List<std::string_view> names(arena);
    names.push_back("first");
    for (int count = 0; count < 100; ++count) names.push_back(names.front());
    EXPECT_EQ(names.size(), 101U);
    EXPECT_EQ(names.back(), "first");
}

TEST(List, IsEmptyAfterItHasBeenMovedFrom) {
    Arena arena;
    List<int> numbers(arena);
    numbers.push_back(1);
    List<int> moved(arena);
    moved = std::move(numbers);
    EXPECT_EQ(moved.size(), 1U);
    EXPECT_TRUE(numbers.empty());
    numbers.push_back(2);
    EXPECT_EQ(numbers.front(), 2);
    EXPECT_EQ(moved.front(), 1);
}

TEST(OperatorText, IsTheSpelling) {
    EXPECT_EQ(std::string_view(OperatorText("==")), "==");
    EXPECT_TRUE(OperatorText("<") == "<");
    EXPECT_FALSE(OperatorText("<") == "<=");
    EXPECT_FALSE(OperatorText("") == "=");
    EXPECT_EQ(sizeof(BinaryExpr), 4 * sizeof(void*));
}

} // namespace
} // namespace Orvane
