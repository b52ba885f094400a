#include "desk/sample/Patients.h"

#include "desk/sample/Random.h"

#include <utility>

namespace sample {

namespace {

constexpr const char16_t *surnames[] = {u"김", u"이", u"박", u"최", u"정", u"강", u"조", u"윤", u"장",   u"임",
                                        u"한", u"오", u"서", u"신", u"권", u"황", u"안", u"송", u"전",   u"홍",
                                        u"유", u"고", u"문", u"양", u"손", u"배", u"백", u"허", u"남궁", u"선우"};
constexpr const char16_t *maleNames[] = {u"영수", u"성호", u"민준", u"정훈", u"상철", u"도윤", u"지훈",
                                         u"현우", u"병철", u"동현", u"재석", u"승민", u"태영", u"종수",
                                         u"건우", u"시우", u"광호", u"준서", u"기철", u"용준"};
constexpr const char16_t *femaleNames[] = {u"영희", u"미숙", u"지영", u"서연", u"은주", u"경희", u"수진",
                                           u"하은", u"정숙", u"민지", u"순자", u"혜진", u"예린", u"현주",
                                           u"명희", u"다은", u"선영", u"옥순", u"채원", u"보람"};

struct Town
{
    const char16_t *name;
    int zip;
    const char *areaCode;
};

constexpr Town towns[] = {
    {u"서울특별시 강남구 역삼로", 6'230, "02"},
    {u"서울특별시 마포구 월드컵로", 4'010, "02"},
    {u"서울특별시 노원구 동일로", 1'850, "02"},
    {u"경기도 성남시 분당구 정자로", 13'560, "031"},
    {u"경기도 고양시 일산동구 중앙로", 10'410, "031"},
    {u"인천광역시 남동구 예술로", 21'550, "032"},
    {u"대전광역시 서구 둔산로", 35'230, "042"},
    {u"부산광역시 해운대구 센텀로", 48'050, "051"},
    {u"전북특별자치도 전주시 완산구 효자로", 54'960, "063"},
    {u"강원특별자치도 춘천시 공지로", 24'340, "033"},
};

QString digits(int value, int width)
{
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

// No exchange begins with 0, so no such telephone rings anywhere.
QString telephone(Random &random, const QString &area)
{
    const int exchange = random.between(100, 999);
    return QStringLiteral("%1-0%2-%3").arg(area, digits(exchange, 3), digits(random.below(10'000), 4));
}

QString address(Random &random, const Town &town)
{
    QString text = QStringLiteral("%1 %2").arg(QString::fromUtf16(town.name)).arg(random.between(1, 320));
    if (random.percent(60)) {
        const int building = random.between(101, 124);
        const int storey = random.between(1, 22);
        text += QStringLiteral(", %1동 %2%3호").arg(building).arg(storey).arg(digits(random.between(1, 6), 2));
    }
    return text;
}

Patient patient(int index)
{
    Random random(std::uint64_t(index) * 7'919 + 11);
    Patient result;
    result.male = random.percent(42);
    const QString surname = QString::fromUtf16(random.pick(surnames));
    result.name = surname + QString::fromUtf16(result.male ? random.pick(maleNames) : random.pick(femaleNames));
    result.chartNumber = digits(index + 1, 6);
    result.birth = QDate(1938, 1, 1).addDays(random.below(28'000));
    const Town &town = random.pick(towns);
    result.zipCode = digits(town.zip + random.below(40), 5);
    result.address = address(random, town);
    if (random.percent(70))
        result.phone = telephone(random, QString::fromLatin1(town.areaCode));
    else
        result.phone = QStringLiteral("");
    result.cell = telephone(random, QStringLiteral("010"));
    const bool allowance = random.percent(6);
    result.insuranceType = allowance ? QStringLiteral("의료급여") : QStringLiteral("건강보험");
    result.insuranceSymbol = digits(random.below(100'000'000), 8);
    result.insuranceNumber = digits(random.below(1'000'000'000), 10);
    result.vip = random.percent(7) ? QStringLiteral("VIP") : QStringLiteral("");
    return result;
}

} // namespace

std::vector<Patient> patients(int count)
{
    std::vector<Patient> list;
    list.reserve(std::size_t(count));
    for (int index = 0; index < count; ++index)
        list.push_back(patient(index));
    return list;
}

} // namespace sample
