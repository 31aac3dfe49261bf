#pragma once

#include <QString>
#include <QTextDocument>

/// The text for a tool tip that shows it as it is, although it may look like rich text ("/x/<b>/a.png").
inline QString PlainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}

/// The text for a label or title that shows it as it is and takes no "&" for a shortcut.
inline QString PlainCaption(QString text)
{
    return text.replace('&', QLatin1String("&&"));
}
