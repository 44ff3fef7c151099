// Reading order and marks over text: made pages of many layouts in three languages, as a camera and as
// scanners see them, read by the library and by the plain `tesseract` command in the page's own language.
//   bench_layout [PAGES [SEED [FOLDER [WORD]]]]
// FOLDER keeps the pictures, what stands on them and what was read; the command is not asked again for what
// it has read there already. With a WORD only those of the pages are read whose title has it.
#include "Layouts.h"
#include "Looks.h"
#include "Readers.h"
#include "Scores.h"

#include "Codec.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <map>

namespace {

constexpr int usualPages = 126; // each layout in each language, twice
constexpr double oneColumnTime = 1.15, columnsTime = 1.3;

struct Result
{
    Score own, cleaned, raw;
    Doubt doubt;
    double ownSeconds = 0, commandSeconds = 0;
};

struct Mean
{
    Result sum;
    int pages = 0, worse = 0;

    void add(const Result& result)
    {
        ++pages;
        worse += result.own.characters > result.cleaned.characters;
        sum.doubt.wrong += result.doubt.wrong;
        sum.doubt.marked += result.doubt.marked;
        sum.doubt.both += result.doubt.both;
        sum.own.characters += result.own.characters;
        sum.own.words += result.own.words;
        sum.cleaned.characters += result.cleaned.characters;
        sum.cleaned.words += result.cleaned.words;
        sum.raw.characters += result.raw.characters;
        sum.raw.words += result.raw.words;
        sum.ownSeconds += result.ownSeconds;
        sum.commandSeconds += result.commandSeconds;
    }
};

void print(const std::string& title, const Result& r, int pages)
{
    const double p = 100.0 / pages;
    std::printf("%-48s %6.2f %6.2f %6.2f   %6.2f %6.2f %6.2f   %5.2f\n",
                title.c_str(),
                r.own.characters * p,
                r.cleaned.characters * p,
                r.raw.characters * p,
                r.own.words * p,
                r.cleaned.words * p,
                r.raw.words * p,
                r.ownSeconds / r.commandSeconds);
    std::fflush(stdout);
}

void printDoubt(const std::string& title, const Doubt& doubt)
{
    std::printf("%-48s %6d highlighted, %3.0f %% of them wrong; %6d wrong, %3.0f %% of them highlighted\n",
                title.c_str(),
                doubt.marked,
                100.0 * doubt.both / std::max(1, doubt.marked),
                doubt.wrong,
                100.0 * doubt.both / std::max(1, doubt.wrong));
}

class Comparison
{
public:
    explicit Comparison(const QString& folder) : folder_(folder) {}

    Result of(const MadePage& made, const Look& look, unsigned seed, const QString& name)
    {
        const QString picture = path(name, "png");
        const QString cleaned = path(name, "cleaned.png");
        if (!QFile::exists(cleaned)) {
            mirvak::writeImage(picture.toStdString(), look.take(made.page, seed), 95);
            cleanPage(picture, cleaned);
        }
        keep(name + QStringLiteral(".txt"), made.readings.front());
        Result result;
        const Answer own = readByLibrary(picture, path(name, "rtf"));
        keep(name + QStringLiteral(".own.txt"), own.text);
        const Answer command = readByCommand(cleaned, modelOf(made.tongue));
        const Answer raw = readByCommand(picture, modelOf(made.tongue));
        result.own = scoreOf(made.readings, own.text);
        result.doubt = doubtOf(made.readings.front(), own.text, own.marked);
        result.cleaned = scoreOf(made.readings, command.text);
        result.raw = scoreOf(made.readings, raw.text);
        result.ownSeconds = own.seconds;
        result.commandSeconds = command.seconds;
        return result;
    }

private:
    QString path(const QString& name, const char* ending) const
    {
        return folder_ + QLatin1Char('/') + name + QLatin1Char('.') + QLatin1String(ending);
    }

    void keep(const QString& name, const QString& text) const
    {
        QFile file(folder_ + QLatin1Char('/') + name);
        if (file.open(QIODevice::WriteOnly))
            file.write(text.toUtf8());
    }

    QString folder_;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("OMP_THREAD_LIMIT", "1"); // the command's threads only wait for each other
    QGuiApplication app(argc, argv);
    const int pages = argc > 1 ? std::atoi(argv[1]) : usualPages;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    QTemporaryDir scratch;
    const std::string word = argc > 4 ? argv[4] : "";
    const QString folder = argc > 3 ? QString::fromLocal8Bit(argv[3]) : scratch.path();
    QDir().mkpath(folder);

    std::printf("%-48s %20s   %20s   %s\n",
                "percent wrong: ours, command cleaned, raw",
                "characters",
                "words",
                "time");
    Comparison comparison(folder);
    std::map<std::string, Mean> means;
    Mean all;
    QRandomGenerator any(seed);
    const auto count = layouts().size();
    for (int i = 0; i < pages; ++i) {
        const auto n = static_cast<size_t>(i);
        const Layout& layout = layouts()[n % count];
        const Tongue tongue = static_cast<Tongue>((n % count + n / count) % 3);
        const unsigned pageSeed = any.generate();
        const Look& look = looks()[any.generate() % looks().size()];
        const std::string title =
            std::to_string(i) + " " + layout.name + ", " + modelOf(tongue) + ", " + look.name;
        if (title.find(word) == std::string::npos)
            continue;
        const MadePage made = makePage(layout, tongue, pageSeed);
        const Result result = comparison.of(
            made, look, pageSeed, QStringLiteral("%1-%2").arg(seed).arg(i, 3, 10, QLatin1Char('0')));
        print(title + (result.own.characters > result.cleaned.characters ? " WORSE" : ""), result, 1);
        all.add(result);
        for (const std::string& key : {std::string(layout.name),
                                       std::string(modelOf(tongue)),
                                       std::string(look.name),
                                       std::string(layout.hasColumns ? "columns" : "one column")})
            means[key].add(result);
    }
    std::puts("means");
    for (const auto& [key, mean] : means)
        print(key, mean.sum, mean.pages);
    print("all, " + std::to_string(all.worse) + " worse than the command", all.sum, all.pages);
    std::puts("words (ideographs one by one)");
    for (const Tongue tongue : {Tongue::english, Tongue::chinese, Tongue::russian})
        printDoubt(modelOf(tongue), means[modelOf(tongue)].sum.doubt);
    std::printf("allowed: no page worse, half of the command's mean, time %.2f, with columns %.2f\n",
                oneColumnTime,
                columnsTime);
    return 0;
}
