#include <algorithm>
#include <cstddef>
#include <random>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

// The two links let one item stand in two lists.
struct Item {
    int key = 0;
    Item *next = nullptr;
    char gap = 0;
    Item *other = nullptr;
};

constexpr uint16_t link_offset = offsetof(Item, next);
constexpr uint16_t other_offset = offsetof(Item, other);

const Item *item(const void *element) { return static_cast<const Item *>(element); }

int32_t by_key(const void *element, const void *key) { return item(element)->key - item(key)->key; }

using Items = std::vector<const void *>;

// The elements, after checks of the ring, the count and the last element.
Items elements(const slList &list) {
    EXPECT_EQ(list.pLast == nullptr, list.nElement == 0);
    Items found;
    const void *element = list.pLast;
    for (int i = 0; i < list.nElement && element != nullptr; ++i) {
        element = list.linkOffset == link_offset ? item(element)->next : item(element)->other;
        found.push_back(element);
    }
    EXPECT_EQ(element, list.pLast) << "the ring does not close after the count";
    return found;
}

class SlList : public testing::Test {
protected:
    SlList() {
        slList_Init(&list, by_key, link_offset);
        for (int i = 0; i < 5; ++i) {
            items[i].key = 10 * i;
        }
    }

    void fill(std::initializer_list<int> indices) {
        for (const int i : indices) {
            EXPECT_EQ(slList_InsertLast(&list, &items[i]), &list);
        }
        slIterator_Init(&iterator, &list);
    }

    // Whether the list holds the items of these indices.
    testing::AssertionResult holds(std::initializer_list<int> indices) const {
        Items expected;
        for (const int i : indices) {
            expected.push_back(&items[i]);
        }
        return elements(list) == expected ? testing::AssertionSuccess()
                                          : testing::AssertionFailure() << "other elements";
    }

    Item items[5];
    slList list{};
    slIterator iterator{};
};

using SlListDeathTest = SlList;

TEST_F(SlList, DefaultComparisonIsIdentity) {
    slList_Init(&list, nullptr, link_offset);
    EXPECT_EQ(list.pCmpFn, _slList_void_cmp);
    fill({0, 1, 2});
    items[1].key = items[0].key;
    EXPECT_EQ(slList_Find(&list, &items[1]), &items[1]);
    EXPECT_EQ(slList_Find(&list, &items[3]), nullptr);
    EXPECT_EQ(slList_FindRemove(&list, &items[2]), &items[2]);
    EXPECT_TRUE(holds({0, 1}));
}

TEST_F(SlList, IdentityComparisonOrdersAddresses) {
    const auto compare = [](uintptr_t a, uintptr_t b) {
        return _slList_void_cmp(reinterpret_cast<void *>(a), reinterpret_cast<void *>(b));
    };
    constexpr uintptr_t base = 0x1000;
    EXPECT_EQ(compare(base, base), 0);
    EXPECT_EQ(compare(base + 24, base), 24);
    EXPECT_EQ(compare(base, base + 24), -24);
    if constexpr (sizeof(uintptr_t) > 4) {
        constexpr auto far = static_cast<uintptr_t>(uint64_t{1} << 32U);
        EXPECT_EQ(compare(base + far, base), 1);
        EXPECT_EQ(compare(base, base + far), -1);
    }
}

TEST_F(SlList, OnlyElementLinksToItselfAndGoesByAnyRemoval) {
    using Removal = void *(*)(slList *, slIterator *, Item *);
    for (const Removal remove : {
             Removal{[](slList *l, slIterator *, Item *) { return slList_RemoveFirst(l); }},
             Removal{[](slList *l, slIterator *, Item *i) { return slList_Remove(l, i); }},
             Removal{[](slList *l, slIterator *, Item *i) { return slList_FindRemove(l, i); }},
             Removal{[](slList *, slIterator *it, Item *) { return slIterator_RemoveCurrent(it); }},
         }) {
        fill({3});
        EXPECT_EQ(items[3].next, &items[3]);
        EXPECT_EQ(remove(&list, &iterator, &items[3]), &items[3]);
        EXPECT_TRUE(holds({}));
        EXPECT_EQ(remove(&list, &iterator, &items[3]), nullptr);
    }
}

TEST_F(SlList, SortedInsertionPutsNewestOfEqualsFirst) {
    items[3].key = items[1].key;
    for (const int i : {1, 4, 0, 3, 2}) {
        slList_InsertSorted(&list, &items[i]);
    }
    EXPECT_TRUE(holds({0, 3, 1, 2, 4}));
}

TEST_F(SlList, TraverseStopsAtFirstNonZeroAnswer) {
    fill({0, 1, 2});
    const auto visit = [](void *element, void *left) -> int32_t {
        static_cast<void>(element);
        return --*static_cast<int *>(left) == 0 ? -1 : 0;
    };
    int left = 2;
    EXPECT_EQ(slList_Traverse(&list, visit, &left), &items[1]);
    EXPECT_EQ(left, 0);
    left = 4;
    EXPECT_EQ(slList_Traverse(&list, visit, &left), nullptr);
    EXPECT_EQ(left, 1);
}

TEST_F(SlList, DisposeLetsTheFunctionFreeEachElementInOrder) {
    static std::vector<int> seen;
    seen.clear();
    const slList_DispFn dispose = [](void *element) {
        seen.push_back(item(element)->key);
        delete static_cast<Item *>(element);
    };
    slList_Dispose(&list, dispose);
    EXPECT_TRUE(seen.empty());
    for (const int key : {7, 3, 5}) {
        auto *const element = new Item;
        element->key = key;
        slList_InsertLast(&list, element);
    }
    slList_Dispose(&list, dispose);
    EXPECT_EQ(seen, (std::vector{7, 3, 5}));
    EXPECT_TRUE(holds({}));
}

TEST_F(SlList, InsertionAtTheEnds) {
    fill({});
    EXPECT_EQ(slIterator_Current(&iterator), nullptr);
    slIterator_InsertBefore(&iterator, &items[0]);
    EXPECT_TRUE(holds({0}));
    EXPECT_EQ(slIterator_Current(&iterator), nullptr) << "still past the end";
    EXPECT_EQ(iterator.position, 1);

    slIterator_Init(&iterator, &list);
    slIterator_InsertAfter(&iterator, &items[1]);
    EXPECT_EQ(list.pLast, &items[1]);
    // The current element is still the first, whose predecessor is the new last one.
    slIterator_InsertBefore(&iterator, &items[2]);
    EXPECT_TRUE(holds({2, 0, 1}));
    EXPECT_EQ(slIterator_Current(&iterator), &items[0]);
    EXPECT_EQ(iterator.position, 1);
}

TEST_F(SlList, FindThroughIteratorGoesOnFromTheCurrentElement) {
    items[3].key = items[1].key;
    fill({0, 1, 2, 3});
    Item key;
    key.key = items[1].key;
    EXPECT_EQ(slIterator_Find(&iterator, nullptr, &key), &items[1]);
    EXPECT_EQ(slIterator_Find(&iterator, nullptr, &key), &items[1]) << "the current one counts";
    slIterator_Next(&iterator);
    EXPECT_EQ(slIterator_Find(&iterator, _slList_void_cmp, &items[3]), &items[3]);
    EXPECT_EQ(iterator.position, 3);
    EXPECT_EQ(slIterator_Find(&iterator, _slList_void_cmp, &items[0]), nullptr);
    EXPECT_EQ(iterator.position, 4);
    EXPECT_EQ(slIterator_RemoveCurrent(&iterator), nullptr);
    EXPECT_TRUE(holds({0, 1, 2, 3}));
}

TEST_F(SlListDeathTest, MisuseAborts) {
    fill({0, 1});
    EXPECT_EQ(slIterator_Go(&iterator, 2), nullptr);
    EXPECT_DEATH(slIterator_Next(&iterator),
                 "sllist.*slIterator_Next.*self->position < self->pList->nElement");
    EXPECT_DEATH(slIterator_Go(&iterator, 3),
                 "sllist.*slIterator_Go.*pos <= self->pList->nElement");
    EXPECT_DEATH(slIterator_Go(&iterator, UINT32_MAX),
                 "sllist.*slIterator_Go.*pos <= self->pList->nElement");
    EXPECT_DEATH(slIterator_InsertAfter(&iterator, &items[2]),
                 "sllist.*slIterator_InsertAfter.*self->pCurrent");
    EXPECT_DEATH(slList_Dispose(&list, nullptr), "sllist.*slList_Dispose.*pDispFn");
}

TEST(SlListLimit, FullListRefusesEveryInsertion) {
    std::vector<Item> items(65536);
    slList list;
    slList_Init(&list, by_key, link_offset);
    for (size_t i = 0; i < 65535; ++i) {
        ASSERT_EQ(slList_InsertLast(&list, &items[i]), &list);
    }
    slIterator iterator;
    slIterator_Init(&iterator, &list);
    const Items before = elements(list);
    Item *const extra = &items[65535];
    for (const uint32_t position : {0U, 17U, 65534U, 65535U}) {
        void *const current = slIterator_Go(&iterator, position);
        void *const previous = iterator.pPrevious;
        EXPECT_EQ(slIterator_InsertBefore(&iterator, extra), nullptr);
        if (current != nullptr) {
            EXPECT_EQ(slIterator_InsertAfter(&iterator, extra), nullptr);
        }
        EXPECT_EQ(iterator.position, static_cast<int32_t>(position));
        EXPECT_EQ(iterator.pCurrent, current);
        EXPECT_EQ(iterator.pPrevious, previous);
    }
    EXPECT_EQ(slList_InsertFirst(&list, extra), nullptr);
    EXPECT_EQ(slList_InsertLast(&list, extra), nullptr);
    EXPECT_EQ(slList_InsertSorted(&list, extra), nullptr) << "before the first";
    extra->key = 1;
    EXPECT_EQ(slList_InsertSorted(&list, extra), nullptr) << "after the last";
    EXPECT_TRUE(elements(list) == before);

    EXPECT_EQ(slList_RemoveFirst(&list), items.data());
    EXPECT_EQ(slList_InsertLast(&list, extra), &list);
    EXPECT_EQ(list.nElement, 65535);
}

// The list against a vector of the same elements, and the iterator against an index into it.
class Model {
public:
    Model(uint32_t seed, uint16_t offset) : random(seed) {
        slList_Init(&list, by_key, offset);
        slIterator_Init(&iterator, &list);
        // Short lists take other paths than long ones.
        for (size_t i = 0; i <= seed % pool_size; ++i) {
            pool[i].key = pick(6);
            unused.push_back(&pool[i]);
        }
    }

    void step() {
        Item key;
        key.key = pick(6);
        const auto same_key = [&](const Item *e) { return e->key == key.key; };
        const auto end = model.end();
        switch (pick(14)) {
        case 0:
            add(0, [&](Item *e) { return slList_InsertFirst(&list, e); });
            restart();
            break;
        case 1:
            add(model.size(), [&](Item *e) { return slList_InsertLast(&list, e); });
            restart();
            break;
        case 2:
            if (!unused.empty()) {
                const auto at = std::find_if(model.begin(), end, [&](const Item *e) {
                    return e->key >= unused.back()->key;
                });
                add(static_cast<size_t>(at - model.begin()),
                    [&](Item *e) { return slList_InsertSorted(&list, e); });
            }
            restart();
            break;
        case 3:
            take(model.begin(), slList_RemoveFirst(&list));
            restart();
            break;
        case 4:
            take(std::find_if(model.begin(), end, same_key), slList_FindRemove(&list, &key));
            restart();
            break;
        case 5: { // sometimes an element that is not in the list
            Item *const element = &pool[static_cast<size_t>(pick(pool_size))];
            take(std::find(model.begin(), end, element), slList_Remove(&list, element));
            restart();
            break;
        }
        case 6: {
            const auto at = std::find_if(model.begin(), end, same_key);
            EXPECT_EQ(slList_Find(&list, &key), at == end ? nullptr : *at);
            break;
        }
        case 7:
            if (index < model.size()) {
                slIterator_Next(&iterator);
                ++index;
            }
            break;
        case 8:
            index = static_cast<size_t>(pick(static_cast<int>(model.size()) + 1));
            EXPECT_EQ(slIterator_Go(&iterator, static_cast<uint32_t>(index)), current());
            break;
        case 9:
            index = static_cast<size_t>(
                std::find_if(model.begin() + static_cast<std::ptrdiff_t>(index), end, same_key) -
                model.begin());
            EXPECT_EQ(slIterator_Find(&iterator, nullptr, &key), current());
            break;
        case 10:
            if (add(index, [&](Item *e) { return slIterator_InsertBefore(&iterator, e); })) {
                ++index;
            }
            break;
        case 11:
            if (index < model.size()) {
                add(index + 1, [&](Item *e) { return slIterator_InsertAfter(&iterator, e); });
            }
            break;
        case 12:
            take(model.begin() + static_cast<std::ptrdiff_t>(index),
                 slIterator_RemoveCurrent(&iterator));
            break;
        default:
            if (pick(20) == 0) {
                slList_RemoveAll(&list);
                unused.insert(unused.end(), model.begin(), model.end());
                model.clear();
                restart();
            }
        }
        check();
    }

private:
    static constexpr int pool_size = 12;

    int pick(int bound) { return static_cast<int>(random() % static_cast<uint32_t>(bound)); }

    void *current() const { return index < model.size() ? model[index] : nullptr; }

    void restart() {
        slIterator_Init(&iterator, &list);
        index = 0;
    }

    template <class Insert>
    bool add(size_t position, Insert insert) {
        if (unused.empty()) {
            return false;
        }
        Item *const element = unused.back();
        unused.pop_back();
        EXPECT_EQ(insert(element), &list);
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(position), element);
        return true;
    }

    void take(std::vector<Item *>::iterator at, const void *removed) {
        ASSERT_EQ(removed, at == model.end() ? nullptr : *at);
        if (at != model.end()) {
            unused.insert(unused.begin(), *at);
            model.erase(at);
        }
    }

    void check() const {
        ASSERT_EQ(elements(list), Items(model.begin(), model.end()));
        ASSERT_EQ(slIterator_Current(&iterator), current());
        ASSERT_EQ(iterator.position, static_cast<int32_t>(index));
        if (index > 0 && index < model.size()) {
            ASSERT_EQ(iterator.pPrevious, model[index - 1]);
        }
    }

    std::mt19937 random;
    Item pool[pool_size];
    std::vector<Item *> unused;
    std::vector<Item *> model;
    slList list{};
    slIterator iterator{};
    size_t index = 0;
};

TEST(SlListModel, RandomOperationsAgreeWithVector) {
    for (uint32_t seed = 0; seed < 60 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed, seed % 2 == 0 ? link_offset : other_offset);
        for (int i = 0; i < 500 && !testing::Test::HasFailure(); ++i) {
            model.step();
        }
    }
}

} // namespace
