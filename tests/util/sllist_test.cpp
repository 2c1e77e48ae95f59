#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <random>
#include <stdexcept>

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

slList list_of(std::vector<Item> &items, size_t count, slList_CmpFn compare = by_key) {
    slList list;
    slList_Init(&list, compare, link_offset);
    for (size_t i = 0; i < count; ++i) {
        EXPECT_EQ(slList_InsertLast(&list, &items[i]), &list);
    }
    return list;
}

TEST(SlList, IdentityIsTheDefaultComparisonAndOrdersAddresses) {
    std::vector<Item> items(3);
    slList list = list_of(items, 2, nullptr);
    EXPECT_EQ(slList_Find(&list, &items[1]), &items[1]);
    EXPECT_EQ(slList_FindRemove(&list, &items[2]), nullptr);
    const auto at = [](uint64_t address) {
        return reinterpret_cast<void *>(static_cast<uintptr_t>(address));
    };
    EXPECT_EQ(_slList_void_cmp(at(0x1000), at(0x1018)), -24);
    EXPECT_EQ(_slList_void_cmp(at(0x100001000), at(0x1000)), sizeof(void *) > 4 ? 1 : 0);
    EXPECT_EQ(_slList_void_cmp(at(0x1000), at(0x100001000)), sizeof(void *) > 4 ? -1 : 0);
}

TEST(SlList, ExceptionsOfACallbackPassThrough) {
    std::vector<Item> items(2);
    const slList list = list_of(items, 2);
    const auto visit = [](void *, void *) -> int32_t { throw std::runtime_error("visit"); };
    EXPECT_THROW(slList_Traverse(&list, visit, nullptr), std::runtime_error);
    EXPECT_EQ(elements(list).size(), 2U);
}

TEST(SlList, TraverseStopsAndDisposeGoesInOrder) {
    static Items seen;
    seen.clear();
    std::vector<Item> items = {{7}, {3}, {5}};
    slList list = list_of(items, 3);
    const auto visit = [](void *element, void *key) { return by_key(element, key) == 0 ? -1 : 0; };
    Item key{3};
    EXPECT_EQ(slList_Traverse(&list, visit, &key), &items[1]);
    key.key = 4;
    EXPECT_EQ(slList_Traverse(&list, visit, &key), nullptr);
    slList_Dispose(&list, [](void *element) {
        seen.push_back(element);
        static_cast<Item *>(element)->next = nullptr; // gone, as far as the list is concerned
    });
    EXPECT_EQ(seen, (Items{&items[0], &items[1], &items[2]}));
    EXPECT_EQ(elements(list), Items());
}

TEST(SlListDeathTest, MisuseAborts) {
    std::vector<Item> items(2);
    slList list = list_of(items, 1);
    slIterator iterator;
    slIterator_Init(&iterator, &list);
    EXPECT_EQ(slIterator_Go(&iterator, 1), nullptr);
    EXPECT_DEATH(slIterator_Next(&iterator),
                 "sllist.*slIterator_Next.*self->position < self->pList->nElement");
    EXPECT_DEATH(slIterator_Go(&iterator, UINT32_MAX),
                 "sllist.*slIterator_Go.*pos <= self->pList->nElement");
    EXPECT_DEATH(slIterator_InsertAfter(&iterator, &items[1]),
                 "sllist.*slIterator_InsertAfter.*self->pCurrent");
    EXPECT_DEATH(slList_Dispose(&list, nullptr), "sllist.*slList_Dispose.*pDispFn");
}

TEST(SlList, FullListRefusesEveryInsertion) {
    std::vector<Item> items(65536);
    slList list = list_of(items, 65535);
    const Items before = elements(list);
    Item *const extra = &items[65535];
    slIterator iterator;
    slIterator_Init(&iterator, &list);
    for (const uint32_t position : {0U, 17U, 65535U}) {
        const void *const current = slIterator_Go(&iterator, position);
        EXPECT_EQ(slIterator_InsertBefore(&iterator, extra), nullptr);
        if (current != nullptr) {
            EXPECT_EQ(slIterator_InsertAfter(&iterator, extra), nullptr);
        }
        EXPECT_EQ(iterator.position, static_cast<int32_t>(position));
    }
    EXPECT_EQ(slList_InsertFirst(&list, extra), nullptr);
    for (extra->key = 0; extra->key < 2; ++extra->key) { // in front of the first, behind the last
        EXPECT_EQ(slList_InsertSorted(&list, extra), nullptr);
    }
    EXPECT_TRUE(elements(list) == before);
    EXPECT_EQ(slList_RemoveFirst(&list), items.data());
    EXPECT_EQ(slList_InsertLast(&list, extra), &list);
}

// The list against a vector of the same elements, and the iterator against an index into it.
class Model {
public:
    Model(uint32_t seed, uint16_t offset) : random(seed) {
        slList_Init(&list, by_key, offset);
        slIterator_Init(&iterator, &list);
    }

    void step() {
        Item *const fresh = &pool.emplace_back();
        fresh->key = pick(6);
        Item key{pick(6)};
        const auto any = static_cast<size_t>(pick(model.size() + 1));
        const auto same = [&](const Item *i) { return i->key == key.key; };
        const auto inserted = [&](size_t at, const slList *result) {
            EXPECT_EQ(result, &list);
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), fresh);
        };
        const auto removed = [&](size_t at, const void *result) {
            EXPECT_EQ(result, element(at));
            if (at < model.size()) {
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
            }
        };
        const auto moved = [&](size_t at, const void *result) {
            index = at;
            EXPECT_EQ(result, element(at));
        };
        const std::function<void()> of_the_list[] = {
            [&] { inserted(0, slList_InsertFirst(&list, fresh)); },
            [&] { inserted(model.size(), slList_InsertLast(&list, fresh)); },
            [&] {
                inserted(find(0, [&](const Item *i) { return i->key >= fresh->key; }),
                         slList_InsertSorted(&list, fresh));
            },
            [&] { EXPECT_EQ(slList_Find(&list, &key), element(find(0, same))); },
            [&] { removed(find(0, same), slList_FindRemove(&list, &key)); },
            // Sometimes an element that is not in the list.
            [&] { removed(any, slList_Remove(&list, any < model.size() ? model[any] : fresh)); },
            [&] { removed(0, slList_RemoveFirst(&list)); },
        };
        const std::function<void()> of_the_iterator[] = {
            [&] { moved(any, slIterator_Go(&iterator, static_cast<uint32_t>(any))); },
            [&] { moved(find(index, same), slIterator_Find(&iterator, nullptr, &key)); },
            [&] { inserted(index++, slIterator_InsertBefore(&iterator, fresh)); },
            [&] {
                if (index < model.size()) {
                    inserted(index + 1, slIterator_InsertAfter(&iterator, fresh));
                }
            },
            [&] { removed(index, slIterator_RemoveCurrent(&iterator)); },
        };
        if (model.size() < 12 && pick(2) != 0) {
            of_the_iterator[pick(std::size(of_the_iterator))]();
        } else {
            of_the_list[model.size() < 12 ? pick(std::size(of_the_list)) : 6]();
            slIterator_Init(&iterator, &list);
            index = 0;
        }
        check();
    }

private:
    int pick(size_t bound) { return static_cast<int>(random() % bound); }

    Item *element(size_t at) const { return at < model.size() ? model[at] : nullptr; }

    template <class Predicate>
    size_t find(size_t from, Predicate wanted) const {
        const auto start = model.begin() + static_cast<std::ptrdiff_t>(from);
        return static_cast<size_t>(std::find_if(start, model.end(), wanted) - model.begin());
    }

    void check() const {
        ASSERT_EQ(elements(list), Items(model.begin(), model.end()));
        ASSERT_EQ(slIterator_Current(&iterator), element(index));
        ASSERT_EQ(iterator.position, static_cast<int32_t>(index));
        if (index > 0 && index < model.size()) {
            ASSERT_EQ(iterator.pPrevious, model[index - 1]);
        }
    }

    std::mt19937 random;
    std::deque<Item> pool;
    std::vector<Item *> model;
    slList list{};
    slIterator iterator{};
    size_t index = 0;
};

TEST(SlList, RandomOperationsAgreeWithVector) {
    for (uint32_t seed = 0; seed < 60 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed, seed % 2 == 0 ? link_offset : other_offset);
        for (int i = 0; i < 500 && !testing::Test::HasFailure(); ++i) {
            model.step();
        }
    }
}

} // namespace
