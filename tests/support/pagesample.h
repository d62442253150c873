// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

#include <utility>

/// The code samples of a page in Markdown.
namespace pagesample {

/// The sample of a page, such as "docs/database.md", that has the text in it. Empty unless there is just one.
QString find(const QString& sPage, const QString& sText);

/// A sample whose texts that are of a place are replaced by others, one after the other. Empty unless each of
/// them was there.
QString moved(QString sSample, const QList<std::pair<QString, QString>>& lPlaces);

} // namespace pagesample
