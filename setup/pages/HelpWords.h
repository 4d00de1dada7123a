#pragma once

#include <QString>
#include <QStringList>

/// The words that a query of the help looks for.
struct HelpQuery {
    QString expression; // for the search engine
    QStringList typed;  // words and phrases of the user
    QStringList wider;  // those that the pages use for them
};

/// Widens what the user typed by the words that the pages use for the same things.
HelpQuery widenedQuery(const QString& typed);

/// How well a title answers a query: the more, the better; 0 if it holds none of the words.
int titleRank(const QString& title, const HelpQuery& query);
