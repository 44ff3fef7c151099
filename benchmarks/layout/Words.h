#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

/// What is written on the pages: three languages, free text of the project's own.
enum class Tongue { english, chinese, russian };

/// As the recogniser's model is named.
const char* modelOf(Tongue tongue);

/// Sentences and short phrases in an order of their own for each seed.
class Words
{
public:
    Words(Tongue tongue, unsigned seed);

    Tongue tongue() const { return tongue_; }
    QRandomGenerator& any() { return any_; }
    /// So many sentences of running text, never the same one again before all have been used.
    QString sentences(int count);
    QString headline();
    QString quote(); ///< what a magazine sets large
    QString person();
    QString company();
    QString street();
    QString town();
    QString thing();
    QString date();
    /// What stands beside the n-th space of a form.
    QString label(int n) const;
    QString amount();

private:
    QString oneOf(const char* key);

    Tongue tongue_;
    QRandomGenerator any_;
    QStringList sentences_;
    int next_ = 0;
};
