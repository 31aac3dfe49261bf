#pragma once

#include <kiv/AppearanceLibraryManager.h>
#include <kiv/AppearanceParser.h>

#include <QString>
#include <QTemporaryDir>

#include <MaterialTest.h>

/// The types "Texture", "Generic", "Metal" and "Plain" (a type with little in common with the others) in a manager.
class ModelFixture {
public:
    ModelFixture();

    kiv::CAppearanceLibraryManager manager;

    /// The appearance of the document; fails the test with the reason when it is refused.
    kiv::CAppearanceInstancePtr read(const kiv::String& document);
    kiv::String text(const kiv::CAppearanceInstancePtr& appearance);
    kiv::CAppearanceInstancePtr make(const char* type);

    /// Writes a file below a temporary folder of this fixture and answers its path.
    std::wstring write(const QString& name, const QByteArray& bytes) const;
    QString path(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

/// A template document of the parameters and panel elements (both the inside of their JSON brackets).
kiv::String templateDocument(const kiv::String& name, const kiv::String& parameters, const kiv::String& elements = {});

Q_DECLARE_METATYPE(kiv::CPropertyValuePtr)
Q_DECLARE_METATYPE(kiv::String)

namespace QTest {

template <>
inline char* toString(const kiv::String& text)
{
    return toString(QString::fromStdString(text));
}

}  // namespace QTest
