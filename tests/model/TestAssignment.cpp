#include "ModelFixture.h"

using namespace kiv;

class TestAssignment : public MaterialTest {
    Q_OBJECT

private:
    ModelFixture m_model;

    /// A "Generic" appearance with a value of its own at every kind of key.
    CAppearanceInstancePtr edited()
    {
        const auto appearance = m_model.make("Generic");
        appearance->SetName("Mine");
        appearance->SetCategory("Generic/Shelf");
        appearance->SetEditType(1);
        appearance->SetTags("red");
        appearance->SetCloudFlag(true);
        appearance->SetDiffuse({0.1f, 0.2f, 0.3f, 0.4f});
        appearance->SetProperty("roughness", MakePropertyValue(0.9f));
        appearance->SetProperty("count", MakePropertyValue(7));
        appearance->SetProperty("note", MakePropertyValue(String("kept")));
        appearance->GetDiffuseTexture()->SetTextureFile("oak.png");
        return appearance;
    }

private slots:
    void aCloneSharesNoTexture()
    {
        const auto original = edited();
        const auto copy = original->Clone("copy");
        QCOMPARE(copy->GetId(), String("copy"));
        QVERIFY(copy->GetCloudFlag());
        copy->SetId(original->GetId());
        QVERIFY(AreEqual(*copy, *original));
        copy->GetDiffuseTexture()->SetTextureFile("ash.png");
        QCOMPARE(original->GetDiffuseTexture()->GetTextureFile(), String("oak.png"));
        QVERIFY(!AreEqual(*copy, *original));
        QVERIFY(original->FindProperty("roughness") == copy->FindProperty("roughness"));
    }

    void anAppearanceMayBecomeItsOwnTexture()
    {
        const auto appearance = edited();
        appearance->Assign(*appearance);
        QCOMPARE(appearance->GetName(), String("Mine"));
        appearance->Assign(*appearance->GetDiffuseTexture());
        QVERIFY(IsTexture(*appearance));
        QCOMPARE(appearance->GetTextureFile(), String("oak.png"));
    }

    /// What a change of type does: the old values go into a fresh appearance, and all of that back into the old object.
    void aChangeOfTypeKeepsWhatBothTypesHave()
    {
        const auto old = edited();
        const auto fresh = m_model.make("Metal");
        fresh->IncompleteAssign(old, false, false);
        QCOMPARE(fresh->GetId(), String("id of Metal"));
        old->IncompleteAssign(fresh, true, true);

        QCOMPARE(old->GetId(), String("id of Generic"));
        QCOMPARE(old->GetName(), String("Mine"));
        QCOMPARE(old->GetCategory(), String("Generic/Shelf"));
        QCOMPARE(old->GetEditType(), 1);
        QVERIFY(old->GetCloudFlag());
        QCOMPARE(old->GetTags(), String("red"));
        QCOMPARE(old->GetTemplateName(), String("Metal"));
        QCOMPARE(old->GetTemplate()->GetName(), String("Metal"));
        QCOMPARE(old->ValueOr("note", String()), String("kept"));
        QCOMPARE(old->GetDiffuse().x, 0.1f);              // both types have it, as vec4 and as colour
        QCOMPARE(old->ValueOr("roughness", 0.0f), 0.9f);  // both types have it
        QCOMPARE(old->ValueOr("metallic", 0.0f), 1.0f);   // only the new type has it
        QCOMPARE(old->ValueOr("count", 0.0f), 0.25f);     // another type in the new template
        QVERIFY(!old->FindProperty("transparent"));       // only the old type had it
        QVERIFY(!old->FindProperty("bump_texture"));
        QCOMPARE(old->GetDiffuseTexture()->GetTextureFile(), String("oak.png"));
        QVERIFY(old->GetDiffuseTexture() != fresh->GetDiffuseTexture());
        QVERIFY(AreEqual(*m_model.read(m_model.text(old)), *old));
    }

    void anExactAssignmentGoesBackToDefaults()
    {
        for (const bool exact : {true, false}) {
            const auto metal = m_model.make("Metal");
            metal->SetProperty("metallic", MakePropertyValue(0.5f));
            metal->SetProperty("note", MakePropertyValue(String("mine")));
            metal->IncompleteAssign(m_model.make("Plain"), false, exact);
            QCOMPARE(metal->GetTemplateName(), String("Metal"));
            QCOMPARE(metal->ValueOr("metallic", 0.0f), exact ? 1.0f : 0.5f);
            QCOMPARE(metal->ValueOr("roughness", 0.0f), 0.75f);
            QCOMPARE(metal->FindProperty("note") == nullptr, exact);
            QCOMPARE(metal->GetId(), String("id of Metal"));
        }
    }

    /// An appearance of a template that nobody knows may hold anything; a declared key still takes its type only.
    void valuesOfAnotherTypeAreNotTaken()
    {
        const auto stranger = std::make_shared<CAppearanceInstance>();
        stranger->SetProperty("diffuse_color", MakePropertyValue(1.0f));
        stranger->SetProperty("roughness", MakePropertyValue(0.3f));
        const auto metal = m_model.make("Metal");
        metal->IncompleteAssign(*stranger, false, false);
        QCOMPARE(metal->GetDiffuse().x, 0.8f);
        QCOMPARE(metal->ValueOr("roughness", 0.0f), 0.3f);
    }

    void opacityAndColourFollowEachOther()
    {
        const auto appearance = m_model.make("Generic");
        appearance->SetDiffuse({1, 0, 0, 0.25f});
        QCOMPARE(appearance->GetTransparent(), 0.25f);
        appearance->SetTransparent(0.75f);
        QVERIFY(appearance->GetDiffuse() == CVec4<float>(1, 0, 0, 0.75f));
        const auto plain = m_model.make("Plain");
        plain->SetTransparent(0.5f);
        QVERIFY(!plain->FindProperty("diffuse_color"));
    }

    /// The keys of all appearances of a type are held once; one that gets a key of its own must not give it to the
    /// others.
    void setsWithTheSameKeysAreIndependent()
    {
        const auto first = m_model.make("Plain");
        const auto second = m_model.make("Plain");
        const std::size_t count = second->size();
        QVERIFY(first->SetProperty("aaa", MakePropertyValue(1)));
        QVERIFY(first->SetProperty("zzz", MakePropertyValue(2)));
        QVERIFY(second->RemoveProperty("roughness") && !second->RemoveProperty("roughness"));
        QCOMPARE(first->size(), count + 2);
        QCOMPARE(second->size(), count - 1);
        QCOMPARE(first->begin()->first, String("aaa"));
        QCOMPARE(first->ValueOr("roughness", 0.0f), 0.75f);
        QCOMPARE(first->ValueOr("zzz", 0), 2);
        QVERIFY(!first->SetProperty("", MakePropertyValue(1)) && !first->SetProperty("b", {}));
        QCOMPARE(m_model.make("Plain")->size(), count);
    }

    void aValueIsWhatAnAnyHolds()
    {
        const CPropertyValue number(boost::any(0.5f));
        QVERIFY(number.GetType() == typeid(float) && number.Get<float>() == 0.5f && !number.TryGet<int>());
        QVERIFY(boost::any_cast<float>(number.GetValue()) == 0.5f);
        QVERIFY(number.Equals(*MakePropertyValue(0.5f)) && !number.Equals(*MakePropertyValue(0.25f)));
        QVERIFY_EXCEPTION_THROWN(number.Get<String>(), boost::bad_any_cast);
        const auto other = MakePropertyValue(QString("text"));
        QVERIFY(other->GetType() == typeid(QString) && other->Get<QString>() == "text" && other->Equals(*other));
        QVERIFY(CPropertyValue().GetType() == typeid(void) && CPropertyValue().GetValue().empty());
    }
};

MATERIAL_TEST_MAIN(TestAssignment)
#include "TestAssignment.moc"
