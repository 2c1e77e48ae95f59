#include <cctype>
#include <cstring>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;

// Makes a tree from its text: "a(b c) - d" is a multipart entity named "a" with the parts "b" and
// "c", an entity without a name, and the entity "d".
class Tree {
public:
    explicit Tree(const char *text) { build(root.get(), text); }

    std::string text() const { return text_of(root.get()); }

    const test::ContainerPtr root{MMS_Container_Create()};

private:
    static void build(MMS_Container *container, const char *&rest) {
        MMS_Entity *entity = nullptr;
        for (; *rest != '\0' && *rest != ')'; ++rest) {
            if (*rest == '(' && entity != nullptr) {
                MMS_Container *const parts = MMS_Container_Create();
                entity->isMultipart = 1;
                MMS_SetField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME, parts);
                build(parts, ++rest);
            } else if (*rest != ' ') {
                const size_t length = std::strcspn(rest, " ()");
                entity = test::add_entity(container);
                if (*rest != '-') {
                    MMS_SetContentId(entity, std::string(rest, length).c_str());
                }
                rest += length - 1;
            }
        }
    }

    static std::string text_of(const MMS_Container *container) {
        std::string result;
        for (uint32_t i = 0; i < MMS_GetEntityCount(container); ++i) {
            const MMS_Entity *const entity = MMS_GetEntity(container, i);
            const char *const name = MMS_GetContentId(entity);
            const MMS_Field *const parts =
                MMS_FindField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
            result += (i != 0 ? " " : "") + std::string(name != nullptr ? name : "-");
            if (parts != nullptr) {
                result += "(" + text_of(static_cast<MMS_Container *>(parts->pValue)) + ")";
            }
        }
        return result;
    }
};

TEST(Container, EntitiesByPositionAndHeader) {
    const Tree tree("a -(b) - c(d) e");
    MMS_Container *const root = tree.root.get();
    MMS_Entity *const second = MMS_GetEntity(root, 1);
    EXPECT_EQ(MMS_DelEntity(root, 5), 0U);
    EXPECT_EQ(MMS_GetEntity(root, 5), nullptr);
    EXPECT_EQ(MMS_DelEntity(root, 0), 1U);
    EXPECT_EQ(MMS_DelEntity(root, 3), 1U);
    EXPECT_EQ(tree.text(), "-(b) - c(d)");
    EXPECT_EQ(MMS_GetFirstEntity(root->pEntityList), second);
    EXPECT_EQ(MMS_GetFirstEntity(Tree("").root->pEntityList), nullptr);

    const auto find = [root](const char *name) {
        return MMS_FindEntityByFieldName(root->pEntityList, name);
    };
    EXPECT_EQ(find("content-ID"), MMS_GetEntity(root, 2));
    EXPECT_EQ(find("Subject"), nullptr);
    EXPECT_EQ(find("X-Unknown"), nullptr);
    MMS_SetField(MMS_GetEntity(root, 1), "X-Other", test::slot(1));
    EXPECT_EQ(find("X-Unknown"), MMS_GetEntity(root, 1)) << "unknown names share the id 0";

    EXPECT_EQ(MMS_GetContainer(Tree("a b").root.get()), nullptr);
    EXPECT_EQ(MMS_GetContainer(root),
              MMS_FindField(second, INTERNAL_NESTED_MULTIPART_FIELD_NAME)->pValue);
}

TEST(Container, FindsAndErasesByText) {
    const struct {
        const char *tree, *wanted;
        std::vector<uint32_t> path; // positions from the root; none: not found
        const char *erased;         // what erasing leaves
    } rows[] = {
        {"a abc", "ABC", {1}, "a"},
        {"<abc> abc b abc", "abc", {1}, "<abc> b abc"},
        {"a(b c) c d", "c", {0, 1}, "a(b) d"},
        {"a(b b) b b", "b", {0, 0}, "a(b) b"},
        {"a(b(c d) d) d", "D", {0, 0, 1}, "a(b(c))"},
        {"a(b)", "a", {}, "a(b)"},
        {"a(b) a", "a", {1}, "a(b)"},
        {"a(-) - b", nullptr, {0, 0}, "a() b"},
        {"a b", nullptr, {}, "a b"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(shown(row.wanted) + " in " + row.tree);
        const Tree tree(row.tree);
        const MMS_Container *container = tree.root.get();
        const MMS_Entity *expected = nullptr;
        for (const uint32_t position : row.path) {
            expected = MMS_GetEntity(container, position);
            container = MMS_GetContainer(container);
        }
        EXPECT_EQ(MMS_FindEntityByContentId(tree.root.get(), row.wanted, 0), expected);
        EXPECT_EQ(MMS_FindEntityByContentId(tree.root.get(), row.wanted, 2), expected);
        EXPECT_EQ(tree.text(), row.tree);
        EXPECT_EQ(MMS_FindEntityByContentId(tree.root.get(), row.wanted, 1), nullptr);
        EXPECT_EQ(tree.text(), row.erased);
    }
    // The flag alone, or the field alone, makes no multipart entity; the text may be a match's own.
    const Tree tree("a b(c)");
    MMS_Container *const root = tree.root.get();
    MMS_GetEntity(root, 0)->isMultipart = 1;
    MMS_GetEntity(root, 1)->isMultipart = 0;
    EXPECT_EQ(MMS_FindEntityByContentId(root, "a", 0), MMS_GetEntity(root, 0));
    EXPECT_EQ(MMS_FindEntityByContentId(root, "c", 0), nullptr);
    EXPECT_EQ(MMS_FindEntityByContentId(root, MMS_GetContentId(MMS_GetEntity(root, 1)), 1),
              nullptr);
    MMS_SetContentLocation(MMS_GetEntity(root, 0), "loc");
    EXPECT_EQ(MMS_FindEntityByContentLocation(root, "LOC", 0), MMS_GetEntity(root, 0));
    EXPECT_EQ(MMS_FindEntityByContentLocation(root, "a", 1), nullptr);
    EXPECT_EQ(tree.text(), "a");
}

TEST(UniqueIds, LettersAndDigitsDrawnFromRand) {
    EXPECT_EQ(GenerateUniqueId(0), nullptr);
    EXPECT_EQ(shown(TextPtr(GenerateUniqueId(1)).get()), "");
    const TextPtr many(GenerateUniqueId(20001));
    int counts[256] = {};
    for (const char *c = many.get(); *c != '\0'; ++c) {
        ++counts[static_cast<uint8_t>(*c)];
    }
    EXPECT_EQ(std::strlen(many.get()), 20000U);
    for (int c = 0; c < 256; ++c) {
        EXPECT_EQ(counts[c] > 0, c < 128 && std::isalnum(c) != 0) << c;
        EXPECT_LT(counts[c], 2 * 20000 / 62) << c;
    }
}

TEST(UniqueIds, ContentIdIsUnlikeEveryOther) {
    const auto draw = [](const std::string &tree) {
        std::srand(5); // NOLINT(cert-msc32-c,cert-msc51-cpp)
        std::string id = shown(TextPtr(CreateUniqueContentId(Tree(tree.c_str()).root.get())).get());
        EXPECT_EQ(id.size(), 5U);
        for (char &c : id) {
            c = static_cast<char>(std::tolower(c));
        }
        return id;
    };
    const std::string id = draw("");
    EXPECT_EQ(draw("a(b)"), id);
    for (const std::string &tree : {"a " + id, "a(b " + id + ")", id + "(b)"}) {
        EXPECT_NE(draw(tree), id) << tree;
    }
}

} // namespace
