#include <cctype>
#include <cstring>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;

// The two searches, which differ in their header alone.
const struct Search {
    const char *title;
    uint32_t (*set)(MMS_Entity *, const char *);
    const char *(*get)(const MMS_Entity *);
    MMS_Entity *(*find)(MMS_Container *, const char *, uint32_t);
} searches[] = {
    {"Content-Id", MMS_SetContentId, MMS_GetContentId, MMS_FindEntityByContentId},
    {"Content-Location", MMS_SetContentLocation, MMS_GetContentLocation,
     MMS_FindEntityByContentLocation},
};

// Makes a tree from its text: "a(b c) - d" is a multipart entity named "a" with the parts "b" and
// "c", an entity without a name, and the entity "d".
class Tree {
public:
    explicit Tree(const char *text, const Search &search = searches[0]) : search_(search) {
        const char *rest = text;
        build(root_.get(), rest);
    }

    MMS_Container *root() const { return root_.get(); }

    std::string text() const { return text_of(root_.get()); }

private:
    void build(MMS_Container *container, const char *&rest) {
        MMS_Entity *entity = nullptr;
        for (; *rest != '\0' && *rest != ')'; ++rest) {
            if (*rest == '(') {
                MMS_Container *const parts = MMS_Container_Create();
                entity->isMultipart = 1;
                MMS_SetField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME, parts);
                build(parts, ++rest);
            } else if (*rest != ' ') {
                const size_t length = std::strcspn(rest, " ()");
                entity = test::add_entity(container);
                if (*rest != '-') {
                    search_.set(entity, std::string(rest, length).c_str());
                }
                rest += length - 1;
            }
        }
    }

    std::string text_of(const MMS_Container *container) const {
        std::string result;
        for (uint32_t i = 0; i < MMS_GetEntityCount(container); ++i) {
            const MMS_Entity *const entity = MMS_GetEntity(container, i);
            const char *const name = search_.get(entity);
            const MMS_Field *const parts =
                MMS_FindField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
            result += (i != 0 ? " " : "") + std::string(name != nullptr ? name : "-");
            if (parts != nullptr) {
                result += "(" + text_of(static_cast<MMS_Container *>(parts->pValue)) + ")";
            }
        }
        return result;
    }

    const Search &search_;
    test::ContainerPtr root_{MMS_Container_Create()};
};

TEST(Container, EntitiesByPosition) {
    const test::ContainerPtr container(MMS_Container_Create());
    EXPECT_EQ(MMS_GetEntityCount(container.get()), 0);
    EXPECT_EQ(MMS_GetFirstEntity(container->pEntityList), nullptr);
    EXPECT_EQ(MMS_DelEntity(container.get(), 0), 0U);
    std::vector<MMS_Entity *> entities;
    for (uint16_t i = 0; i < 4; ++i) {
        entities.push_back(MMS_Entity_Create());
        uint16_t position = 99;
        EXPECT_EQ(MMS_AddEntity(container.get(), entities.back(), &position), 1U);
        EXPECT_EQ(position, i);
    }
    EXPECT_EQ(MMS_GetEntity(container.get(), 4), nullptr);
    EXPECT_EQ(MMS_DelEntity(container.get(), 4), 0U);
    EXPECT_EQ(MMS_DelEntity(container.get(), 0), 1U);
    EXPECT_EQ(MMS_DelEntity(container.get(), 1), 1U);
    EXPECT_EQ(MMS_GetEntityCount(container.get()), 2);
    EXPECT_EQ(MMS_GetFirstEntity(container->pEntityList), entities[1]);
    EXPECT_EQ(MMS_GetEntity(container.get(), 1), entities[3]);
}

TEST(Container, EntityOfAHeader) {
    const Tree tree("-(a) - b c");
    const MMS_EntityList *const list = tree.root()->pEntityList;
    EXPECT_EQ(MMS_FindEntityByFieldName(list, "content-ID"), MMS_GetEntity(tree.root(), 2));
    EXPECT_EQ(MMS_FindEntityByFieldName(list, "Subject"), nullptr);
    EXPECT_EQ(MMS_FindEntityByFieldName(list, "X-Unknown"), nullptr);
    MMS_SetField(MMS_GetEntity(tree.root(), 1), "X-Other", test::slot(1));
    EXPECT_EQ(MMS_FindEntityByFieldName(list, "X-Unknown"), MMS_GetEntity(tree.root(), 1))
        << "unknown names share the id 0";

    EXPECT_EQ(MMS_GetContainer(Tree("a b").root()), nullptr);
    const Tree two("a b(c) d(e)");
    EXPECT_EQ(MMS_GetContainer(two.root()),
              MMS_FindField(MMS_GetEntity(two.root(), 1), "INTERNAL_Nested-Multipart")->pValue);
}

TEST(Container, FindsByTextDepthFirst) {
    const struct {
        const char *tree, *wanted;
        std::vector<uint32_t> path; // positions from the root; none: not found
    } rows[] = {
        {"a abc", "ABC", {1}},
        {"<abc> abc", "abc", {1}},
        {"<abc>", "abc", {}},
        {"a(b c) c", "c", {0, 1}},
        {"a(b(c d) d) d", "D", {0, 0, 1}},
        {"a(b)", "a", {}},
        {"a(b) a", "a", {1}},
        {"a() b", "b", {1}},
        {"a(-) -", nullptr, {0, 0}},
        {"a b", nullptr, {}},
        {"", "a", {}},
    };
    for (const Search &search : searches) {
        for (const auto &row : rows) {
            SCOPED_TRACE(std::string(search.title) + ": " + shown(row.wanted) + " in " + row.tree);
            const Tree tree(row.tree, search);
            const MMS_Container *container = tree.root();
            const MMS_Entity *expected = nullptr;
            for (const uint32_t position : row.path) {
                expected = MMS_GetEntity(container, position);
                container = static_cast<const MMS_Container *>(
                    expected->isMultipart != 0
                        ? MMS_FindField(expected, INTERNAL_NESTED_MULTIPART_FIELD_NAME)->pValue
                        : nullptr);
            }
            for (const uint32_t erase : {0U, 2U}) {
                EXPECT_EQ(search.find(tree.root(), row.wanted, erase), expected);
            }
            EXPECT_EQ(tree.text(), row.tree);
        }
    }
    // The flag alone, or the field alone, makes no multipart entity.
    const Tree tree("a b(c)");
    MMS_GetEntity(tree.root(), 0)->isMultipart = 1;
    MMS_GetEntity(tree.root(), 1)->isMultipart = 0;
    for (const uint32_t position : {0U, 1U}) {
        EXPECT_EQ(MMS_FindEntityByContentId(tree.root(), position == 0 ? "a" : "b", 0),
                  MMS_GetEntity(tree.root(), position));
    }
    EXPECT_EQ(MMS_FindEntityByContentId(tree.root(), "c", 0), nullptr);
}

TEST(Container, ErasesByText) {
    const char *const rows[][3] = {
        {"a b c", "B", "a c"},
        {"a b b", "b", "a b"},
        {"a(b c) d", "c", "a(b) d"},
        {"a(b b) b b", "b", "a(b) b"},
        {"a(b(c) c) c", "c", "a(b()) "},
        {"a(b)", "a", "a(b)"},
        {"a", "x", "a"},
        {"a(-) - b", nullptr, "a() b"},
    };
    for (const Search &search : searches) {
        for (const auto &row : rows) {
            SCOPED_TRACE(std::string(search.title) + ": " + shown(row[1]) + " in " + row[0]);
            const Tree tree(row[0], search);
            EXPECT_EQ(search.find(tree.root(), row[1], 1), nullptr);
            EXPECT_EQ(tree.text(), Tree(row[2], search).text());
        }
    }
}

TEST(Container, ErasesByTheTextOfAMatch) {
    const Tree tree("a(b) b c");
    const char *const stored = MMS_GetContentId(MMS_FindEntityByContentId(tree.root(), "b", 0));
    EXPECT_EQ(MMS_FindEntityByContentId(tree.root(), stored, 1), nullptr);
    EXPECT_EQ(tree.text(), "a() c");
}

TEST(UniqueIds, LettersAndDigitsDrawnFromRand) {
    EXPECT_EQ(GenerateUniqueId(0), nullptr);
    for (const uint32_t size : {1U, 2U, 6U, 256U, 257U, 70000U}) {
        const TextPtr id(GenerateUniqueId(size));
        EXPECT_EQ(std::strlen(id.get()), size - 1);
    }
    const TextPtr many(GenerateUniqueId(20000));
    int counts[256] = {};
    for (const char *c = many.get(); *c != '\0'; ++c) {
        ++counts[static_cast<uint8_t>(*c)];
    }
    for (int c = 0; c < 256; ++c) {
        const bool allowed = c < 128 && std::isalnum(c) != 0;
        EXPECT_EQ(counts[c] > 0, allowed) << c;
        EXPECT_LT(counts[c], 2 * 20000 / 62) << c;
    }
    const auto seeded = [](unsigned seed) {
        std::srand(seed);
        return TextPtr(GenerateUniqueId(30));
    };
    EXPECT_STREQ(seeded(1).get(), seeded(1).get());
    EXPECT_STRNE(seeded(1).get(), seeded(2).get());
    EXPECT_STRNE(seeded(1).get(), TextPtr(GenerateUniqueId(30)).get()) << "never seeds";
}

TEST(UniqueIds, ContentIdIsUnlikeEveryOther) {
    const auto draw = [](const MMS_Container *container) {
        std::srand(5);
        return TextPtr(CreateUniqueContentId(container));
    };
    const TextPtr taken = draw(Tree("").root());
    EXPECT_EQ(std::strlen(taken.get()), 5U);
    std::string id = taken.get();
    for (char &c : id) {
        c = static_cast<char>(std::tolower(c));
    }
    EXPECT_STREQ(draw(Tree("a(b)").root()).get(), taken.get());
    for (const std::string &tree : {id, "a " + id, "a(b " + id + ")", "a(" + id + "(b))",
                                    id + "(b)", "a(b()) " + id + "()"}) {
        const TextPtr other = draw(Tree(tree.c_str()).root());
        EXPECT_EQ(std::strlen(other.get()), 5U);
        EXPECT_NE(StrCaseCmp(other.get(), id.c_str()), 0) << tree;
    }
}

} // namespace
