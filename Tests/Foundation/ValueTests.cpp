#include <limits>
#include <unordered_set>

#include "Platform/Foundation/Error.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Foundation/IndexPath.h"
#include "Platform/Foundation/Value.h"
#include "Platform/Foundation/WeakListeners.h"
#include "Platform/Foundation/WeakMaps.h"

using namespace zornic;

namespace nested {
template <class T>
class Box {
public:
    class Lid : public Object {};
};
class Plain : public Object {
public:
    void didMake() override { self = weak(this); }
    std::weak_ptr<Plain> self;
};
}  // namespace nested

namespace {
class Hidden : public Object {};
}  // namespace

TEST(ObjectTest, ClassNamesAreWithoutNamespacesAndTemplateArguments) {
    class Local {};
    using Crowded = nested::Box<std::map<std::string, nested::Plain>>;
    EXPECT_EQ(make<nested::Plain>()->className(), "Plain");
    EXPECT_EQ(make<Hidden>()->className(), "Hidden");
    EXPECT_EQ(make<Crowded::Lid>()->className(), "Lid");
    EXPECT_EQ(classNameOf<nested::Box<nested::Plain>>(), "Box");
    EXPECT_EQ(classNameOf<Local>(), "Local");
    const auto plain = make<nested::Plain>();
    EXPECT_EQ(plain->self.lock(), plain);
}

TEST(ValueTest, NumbersCompareByValueAndConvertWithinTheirRange) {
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(Value(3), Value(std::uint64_t{3}));
    EXPECT_EQ(Value(true), Value(1));
    EXPECT_EQ(Value(3.0), Value(3));
    EXPECT_NE(Value(3.5), Value(3));
    EXPECT_NE(Value(-1), Value(largest));
    EXPECT_NE(Value(9007199254740993), Value(9007199254740992.0));
    EXPECT_NE(Value(18446744073709551616.0), Value(largest));
    EXPECT_NE(Value("1"), Value(1));
    EXPECT_NE(Value(0), Value());
    EXPECT_NE(Value(Date()), Value(0));

    EXPECT_EQ(Value(-1).asUnsigned(), largest);
    EXPECT_EQ(Value(largest).asInteger(), -1);
    EXPECT_EQ(Value(1e300).asInteger(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(1e300).asUnsigned(), largest);
    EXPECT_EQ(Value(-1e300).asInteger(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Value(std::numeric_limits<double>::quiet_NaN()).asUnsigned(), 0U);
    EXPECT_EQ(Value(-2.9).asInteger(), -2);
    EXPECT_EQ(Value(largest).asNumber(), 18446744073709551616.0);
    EXPECT_EQ(Value("7").asInteger(), 0);

    const Error bare("player", 7);
    const Error told("player", 7, {{Error::LocalizedDescriptionKey, "No sound"}});
    EXPECT_EQ(bare.localizedDescription(), "player (7)");
    EXPECT_EQ(told.localizedDescription(), "No sound");
}

TEST(IndexPathTest, PathsOfADisplayHashApartAndOrderByPosition) {
    std::unordered_set<std::size_t> hashes;
    for (std::uint64_t section = 0; section < 50; ++section)
        for (std::uint64_t row = 0; row < 50; ++row)
            hashes.insert(std::hash<IndexPath>()(IndexPath::forRow(row, section)));
    EXPECT_EQ(hashes.size(), 2500U);
    EXPECT_NE(std::hash<IndexPath>()({}), std::hash<IndexPath>()({0}));
    EXPECT_LT((IndexPath{0, 9}), (IndexPath{1, 0}));
    EXPECT_EQ((IndexPath{1, 2}).removingLast().appending(3), (IndexPath{1, 3}));
    EXPECT_EQ(IndexPath().removingLast(), IndexPath());
    EXPECT_EQ((IndexPath{1}).row(), NotFound);
}

TEST(CacheTest, DropsWhatWasUsedLongestAgo) {
    EvictingCache<int, std::string> cache(3);
    cache.set(1, "one");
    cache.set(2, "two");
    cache.set(3, "three");
    EXPECT_EQ(cache.get(1), "one");
    cache.set(4, "four");
    EXPECT_EQ(cache.get(2), std::nullopt);
    EXPECT_EQ(cache.get(1), "one");
    cache.set(5, "too large", 4);
    EXPECT_EQ(cache.get(5), std::nullopt);
}

TEST(WeakTest, EntriesVanishWithWhatTheyDependOn) {
    WeakKeyMap<Object, int> byKey;
    WeakValueMapTable<IndexPath, Object> byValue;
    WeakListeners<nested::Plain> listeners;
    auto first = make<nested::Plain>();
    auto second = make<nested::Plain>();
    byKey.set(first, 1);
    byValue.set({1}, first);
    listeners.add(first);
    listeners.add(second);
    EXPECT_EQ(byKey.get(first), 1);
    EXPECT_EQ(byKey.get(second), 0);
    EXPECT_EQ(byValue.get({1}), first);

    int called = 0;
    listeners.notify([&](nested::Plain& listener) {
        ++called;
        if (&listener != first.get()) return;
        second.reset();  // destroyed before its turn
        listeners.add(first);
    });
    EXPECT_EQ(called, 1);
    first.reset();
    EXPECT_EQ(byKey.count(), 0U);
    EXPECT_EQ(byValue.count(), 0U);
    EXPECT_EQ(byValue.get({1}), nullptr);
}
