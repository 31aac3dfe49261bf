#pragma once

#include <QString>
#include <QStringList>

/// The arrows between the rooms of the repository, checked on the #include lines of its sources.
class CIncludeRules {
public:
    /// Reads all C++ files of the rooms below `root`.
    explicit CIncludeRules(const QString& root);

    const QStringList& GetFiles() const { return m_files; }
    /// "file:line: what is wrong" for each line that breaks a rule.
    QStringList FindViolations() const;

private:
    QStringList CheckFile(const QString& file) const;
    QString CheckInclude(const QString& file, const QString& included, bool angled) const;
    QString CheckArrow(const QString& file, const QString& target, bool angled) const;
    QString FindTarget(const QString& file, const QString& included, bool angled) const;
    bool IsExported(const QString& header) const;

    QString m_root;
    QStringList m_files;  // relative to the root
};
