// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RandomEditor.h"

#include <map>
#include <set>

namespace {

/// Counts what lives on after a document was emptied.
class CLeakCounter {
public:
    /// Remembers every object, picture and version that the document knows.
    void Look(const CPixoluneDoc& doc)
    {
        CParts parts(*this);
        for (const Ref<CPicObject>& object : doc.Canvas().objects)
            Add(object);
        for (const auto* list : {&doc.History().UndoList(), &doc.History().RedoList()}) {
            for (const auto& command : *list)
                command->VisitParts(parts);
        }
    }
    /// Those that somebody but the counter holds. The documents must be empty.
    [[nodiscard]] size_t CountLeaks() const
    {
        size_t leaks = 0;
        for (const Ref<CPicObject>& object : m_objects)
            leaks += object->ReferenceCount() != 1;
        for (const Ref<CRasterImage>& image : m_images)
            leaks += image->ReferenceCount() != 2; // its object's and the counter's
        std::map<const CPictureVersion*, int> holders;
        for (const Ref<CRasterImage>& image : m_images)
            ++holders[image->Version().Get()];
        for (const Ref<CPictureVersion>& version : m_versions)
            ++holders[version->Base().Get()];
        for (const Ref<CPictureVersion>& version : m_versions)
            leaks += version->ReferenceCount() != holders[version.Get()] + 1;
        return leaks;
    }

private:
    class CParts final : public ICommandParts {
    public:
        explicit CParts(CLeakCounter& counter) : m_counter(counter) {}
        void List(const CObjectList& objects, const CObjectList&, OtherFlags) override
        {
            for (const Ref<CPicObject>& object : objects)
                m_counter.Add(object);
        }
        void Picture(const Ref<CRasterImage>&, const Ref<CPictureVersion>& saved) override
        {
            m_counter.m_versions.insert(saved);
        }

    private:
        CLeakCounter& m_counter;
    };
    void Add(const Ref<CPicObject>& object)
    {
        m_objects.insert(object);
        m_images.insert(object->image);
        m_versions.insert(object->image->Version());
    }
    struct Before {
        template <typename T> bool operator()(const Ref<T>& a, const Ref<T>& b) const
        {
            return a.Get() < b.Get();
        }
    };
    std::set<Ref<CPicObject>, Before> m_objects;
    std::set<Ref<CRasterImage>, Before> m_images;
    std::set<Ref<CPictureVersion>, Before> m_versions;
};

TEST(RandomHistory, UndoAndRedoBringBackEveryByteOfEveryState)
{
    for (uint32_t seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE(seed);
        TestDocument test;
        test.settings.Set(Setting::UndoMaxTimes, 10000);
        test.doc.Canvas().width = test.doc.Canvas().height = 10;
        CRandomEditor editor(test, seed);
        std::vector<DocumentState> states{DocumentState::Of(test.doc)};
        for (int step = 0; step < 60; ++step) {
            editor.SelectSome();
            editor.Step();
            editor.Tidy();
            states.resize(test.doc.History().UndoList().size() + 1);
            states.back() = DocumentState::Of(test.doc);
        }
        // An operation may record several commands; their middle states were not seen.
        const auto matches = [&](size_t index) {
            return states[index].canvas == Size() || states[index] == DocumentState::Of(test.doc);
        };
        for (size_t index = states.size() - 1; test.doc.Undo(); editor.Tidy())
            ASSERT_TRUE(matches(--index)) << "undo to state " << index;
        EXPECT_TRUE(test.doc.Canvas().objects.IsEmpty());
        for (size_t index = 0; test.doc.Redo(); editor.Tidy())
            ASSERT_TRUE(matches(++index)) << "redo to state " << index;
    }
}

/// Remembers what every version of every picture showed when it was new. Holds none of them.
class CVersionWitness {
public:
    /// Whether all pictures of the document are what their versions once were.
    [[nodiscard]] bool Agrees(const CPixoluneDoc& doc)
    {
        bool agrees = true;
        for (const Ref<CPicObject>& object : doc.Canvas().objects) {
            CRasterImage& image = *object->image;
            if (image.Version()->Number() == 0)
                image.Version()->SetNumber(++m_last);
            const auto block = image.Dib().Block();
            const std::vector<uint8_t> bytes(block.begin(), block.end());
            agrees = agrees && m_bytes.try_emplace(image.Version()->Number(), bytes).first->second == bytes;
        }
        return agrees;
    }

private:
    uint32_t m_last = 0;
    std::map<uint32_t, std::vector<uint8_t>> m_bytes;
};

TEST(RandomHistory, AnyOrderOfUndoRedoAndNewActionsIsSafeAndLeaksNothing)
{
    for (uint32_t seed = 10000; seed < 13000; ++seed) {
        SCOPED_TRACE(seed);
        TestDocument test;
        test.settings.Set(Setting::UndoMaxTimes, 1 + static_cast<int>(seed % 9));
        test.doc.Canvas().width = test.doc.Canvas().height = 10;
        CRandomEditor editor(test, seed);
        CVersionWitness witness;
        CLeakCounter counter;
        for (int step = 0; step < 60; ++step) {
            editor.SelectSome();
            const int choice = editor.Below(4);
            if (choice == 0)
                test.doc.Undo();
            else if (choice == 1)
                test.doc.Redo();
            else
                editor.Step();
            editor.Tidy();
            ASSERT_TRUE(witness.Agrees(test.doc));
            // The counter's references keep bases from being skipped.
            if (seed % 2 == 0)
                counter.Look(test.doc);
        }
        editor.ForgetTidying();
        test.doc.Adopt(CObjectCanvas());
        ASSERT_EQ(counter.CountLeaks(), 0u);
    }
}

} // namespace
