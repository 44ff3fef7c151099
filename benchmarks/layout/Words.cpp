#include "Words.h"

#include "pages/Pages.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

struct Phrases
{
    const char* key;
    const char* english;
    const char* chinese;
    const char* russian;
};

constexpr Phrases phrases[] = {
    {"headline",
     "The river gives back its bridge|A winter among the bookbinders|Who wound the station clock|Paper made "
     "of rags and patience|Nine days of blue|What the ferryman wrote",
     "河水退去以后|旧书店的一天|钟表匠的四十圈|图书馆里的志愿者|纸是怎样做成的|桂花树下的约定",
     "Река возвращает мост|Зима у переплётчиков|Кто заводил часы|Бумага из тряпок и терпения|Девять дней "
     "синевы|Что записал паромщик"},
    {"quote",
     "Nobody counts the days in a place where the clock is wound by hand|We kept the oars, though the ferry "
     "had gone|A good binding opens flat and asks for nothing|I have read every page that the flood left us|"
     "You learn to listen to paper before you cut it",
     "纸会记住每一双手的温度|渡船早已不在，桨我们还留着|好书翻开来是平的，什么也不求|"
     "洪水留下的每一页我都读过|下刀之前，先要学会听纸的声音",
     "Никто не считает дни там, где часы заводят рукой|Паром ушёл, а вёсла мы сохранили|Хорошая книга лежит "
     "раскрытой и ничего не просит|Я прочёл каждую страницу, что оставила нам вода|Прежде чем резать бумагу, "
     "научись её слушать"},
    {"person",
     "Imogen Farraday|Abel Thornquist|Theodora Quillmark|Marta Hollins|Edwin Carrow|Rosalind Pike",
     "顾明远|林若溪|王小明|陈思雨|赵文博|孙晓兰",
     "Ефим Ладыгин|Мария Лесная|Анна Верескова|Пётр Снегирёв|Ольга Зимина|Иван Луговой"},
    {"company",
     "Quillmark & Daughters|The Reading Room|Harbour Paper Works|Saltmarket Bindery",
     "云溪镇图书馆|东河造纸作坊|桂花书店|南桥文化馆",
     "Музей бумаги|Переплётная мастерская|Почтовая станция|Книжная лавка"},
    {"street",
     "14 Saltmarket Row|3 Cooper's Lane|27 Mill Street|9 North Quay|118 Ferry Road",
     "河东路十四号|桂花巷三号|磨坊街二十七号|北码头九号",
     "улица Мельничная, 14|переулок Бондарный, 3|Речная улица, 27|Северная набережная, 9"},
    {"town",
     "Port Ellery|Marrow Ferry|Upper Linden|Stonebridge",
     "云溪镇|东河县|南桥市|青石镇",
     "Нижний Берег|Каменный Мост|Верхние Липы|Старая Пристань"},
    {"thing",
     "Cream laid paper|Marbled endpapers|Linen tapes|Bone folder|Bookbinding thread|Wheat paste|Leather "
     "offcuts|Brass corners|Felt mats|Water jug",
     "宣纸|蓝色布面|麻线|骨刀|装订针|面粉浆糊|牛皮边料|铜包角|毛毡垫|木夹板",
     "Бумага верже|Мраморный форзац|Льняная тесьма|Костяной нож|Нитки для шитья|Мучной клейстер|Обрезки "
     "кожи|Медные уголки|Войлок|Кувшин для воды"},
    {"month",
     "January|March|April|June|September|October",
     "一月|三月|四月|六月|九月|十月",
     "января|марта|апреля|июня|сентября|октября"},
    {"label",
     "Name|Address|Town|Date of birth|Telephone|Profession|Member since|Signature",
     "姓名|地址|城市|出生日期|联系电话|职业|入会日期|签名",
     "Фамилия|Адрес|Город|Дата рождения|Телефон|Профессия|Дата вступления|Подпись"},
};

QStringList listOf(Tongue tongue, const char* key)
{
    for (const Phrases& row : phrases) {
        if (qstrcmp(row.key, key) == 0) {
            const char* text = tongue == Tongue::english   ? row.english
                               : tongue == Tongue::chinese ? row.chinese
                                                           : row.russian;
            return QString::fromUtf8(text).split(QLatin1Char('|'));
        }
    }
    return {};
}

QStringList sentencesOf(Tongue tongue)
{
    QStringList names{QStringLiteral("english"), QStringLiteral("book-left"), QStringLiteral("book-right")};
    if (tongue != Tongue::english)
        names =
            QStringList{tongue == Tongue::chinese ? QStringLiteral("chinese") : QStringLiteral("russian")};
    // Quotations and dialogue are not torn apart: only a full stop or its like ends a sentence.
    static const QRegularExpression end(QStringLiteral("(?<=[.!?])\\s+(?=[A-ZА-Я])|(?<=[。！？])(?=[^”])"));
    QStringList all;
    for (const QString& name : names) {
        for (const QString& paragraph : deskpictures::pageText(name)) {
            if (paragraph.size() > (tongue == Tongue::chinese ? 20 : 60))
                all += paragraph.split(end, Qt::SkipEmptyParts);
        }
    }
    return all;
}

} // namespace

const char* modelOf(Tongue tongue)
{
    return tongue == Tongue::english ? "eng" : tongue == Tongue::chinese ? "chi_sim" : "rus";
}

Words::Words(Tongue tongue, unsigned seed) : tongue_(tongue), any_(seed), sentences_(sentencesOf(tongue))
{
    std::shuffle(sentences_.begin(), sentences_.end(), any_);
}

QString Words::sentences(int count)
{
    QStringList some;
    for (int i = 0; i < count; ++i)
        some += sentences_[next_++ % sentences_.size()].trimmed();
    return some.join(tongue_ == Tongue::chinese ? QString() : QStringLiteral(" "));
}

QString Words::oneOf(const char* key)
{
    const QStringList list = listOf(tongue_, key);
    return list[any_.bounded(list.size())];
}

QString Words::headline()
{
    return oneOf("headline");
}

QString Words::quote()
{
    return oneOf("quote");
}

QString Words::person()
{
    return oneOf("person");
}

QString Words::company()
{
    return oneOf("company");
}

QString Words::street()
{
    return oneOf("street");
}

QString Words::town()
{
    return oneOf("town");
}

QString Words::thing()
{
    return oneOf("thing");
}

QString Words::date()
{
    const int day = any_.bounded(1, 29), year = any_.bounded(1980, 2025);
    if (tongue_ == Tongue::chinese)
        return QStringLiteral("%1年%2%3日").arg(year).arg(oneOf("month")).arg(day);
    return QStringLiteral("%1 %2 %3").arg(day).arg(oneOf("month")).arg(year);
}

QString Words::label(int n) const
{
    const QStringList list = listOf(tongue_, "label");
    return list[n % list.size()];
}

QString Words::amount()
{
    return QStringLiteral("%1.%2").arg(any_.bounded(1, 900)).arg(any_.bounded(10, 100));
}
