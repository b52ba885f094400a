#include "desk/sample/Catalogue.h"

#include "desk/sample/Random.h"

namespace sample {

namespace {

enum Mark : int { Plain = 0, TaxFree = 1, Hidden = 2, NotHandled = 4 };

struct Listed
{
    const char16_t *category;
    const char16_t *name;
    int price;
    int marks;
    const char16_t *memo;
};

// Produce that is only dried or cut is free of tax, everything made of it is not.
constexpr Listed shelf[] = {
    {u"홍삼", u"6년근 홍삼정 240g", 165'000, Plain, u"하루 3회 1g"},
    {u"홍삼", u"6년근 홍삼정 100g", 78'000, Plain, u""},
    {u"홍삼", u"홍삼 달임액 30포", 62'000, Plain, u"식후 1포"},
    {u"홍삼", u"홍삼 절편 200g", 45'000, Plain, u""},
    {u"홍삼", u"홍삼 분말 90g", 52'500, Plain, u""},
    {u"홍삼", u"어린이 홍삼젤리 20포", 24'800, Plain, u"4세 이상"},
    {u"홍삼", u"홍삼 캔디 500g", 8'900, Plain, u""},
    {u"홍삼", u"홍삼 선물세트 (구형 포장)", 120'000, NotHandled, u"포장 변경으로 단종"},
    {u"보약", u"경옥고 600g", 230'000, Plain, u"냉장 보관"},
    {u"보약", u"경옥고 스틱 15g×30포", 185'000, Plain, u""},
    {u"보약", u"공진단 1환", 45'000, Plain, u""},
    {u"보약", u"공진단 10환 (목함)", 420'000, Plain, u"예약 판매"},
    {u"보약", u"녹용 쌍화탕 30포", 198'000, Plain, u""},
    {u"보약", u"총명차 60포", 132'000, Plain, u"수험생"},
    {u"보약", u"십전대보환 120환", 88'000, Plain, u""},
    {u"보약", u"우황청심환 1환", 9'500, Plain, u""},
    {u"보약", u"사슴 녹용 절편 100g", 310'000, Hidden, u"원장님 처방 시에만 판매"},
    {u"환·고", u"도라지고 500g", 42'000, Plain, u"따뜻한 물에 타서"},
    {u"환·고", u"배도라지즙 30포", 28'500, Plain, u""},
    {u"환·고", u"흑염소 진액 60포", 240'000, Plain, u""},
    {u"환·고", u"천마환 300g", 38'000, Plain, u""},
    {u"환·고", u"노니환 300g", 26'900, Plain, u""},
    {u"환·고", u"여주환 300g", 24'500, Plain, u""},
    {u"환·고", u"함초환 250g", 19'800, NotHandled, u"공급 중단"},
    {u"환·고", u"침향환 30환", 156'000, Plain, u""},
    {u"한방차", u"쌍화차 20포", 18'000, Plain, u""},
    {u"한방차", u"생강차 500g", 14'500, Plain, u""},
    {u"한방차", u"대추차 500g", 15'500, Plain, u""},
    {u"한방차", u"유자차 1kg", 16'800, Plain, u""},
    {u"한방차", u"십전대보차 30포", 33'000, Plain, u""},
    {u"한방차", u"오미자청 500ml", 23'750, Plain, u""},
    {u"한방차", u"감잎차 티백 50입", 9'800, Plain, u""},
    {u"한방차", u"국화차 30g", 12'500, Plain, u""},
    {u"한방차", u"박하차 티백 20입", 6'450, Plain, u""},
    {u"약재", u"건대추 500g", 12'000, TaxFree, u"국산"},
    {u"약재", u"구기자 300g", 13'500, TaxFree, u"국산"},
    {u"약재", u"오미자 300g", 17'500, TaxFree, u"국산"},
    {u"약재", u"황기 600g", 16'000, TaxFree, u"국산"},
    {u"약재", u"당귀 600g", 18'900, TaxFree, u"국산"},
    {u"약재", u"감초 300g", 9'200, TaxFree, u""},
    {u"약재", u"계피 300g", 6'750, TaxFree, u""},
    {u"약재", u"인삼 (건삼) 300g", 64'000, TaxFree, u"국산"},
    {u"약재", u"마른 생강 300g", 11'350, TaxFree, u""},
    {u"약재", u"율무 1kg", 9'900, TaxFree, u""},
    {u"약재", u"영지버섯 300g", 27'000, TaxFree, u""},
    {u"건강식품", u"비타민C 1000mg 90정", 19'500, Plain, u""},
    {u"건강식품", u"오메가3 60캡슐", 32'000, Plain, u""},
    {u"건강식품", u"프로바이오틱스 30포", 36'000, Plain, u"냉장 보관"},
    {u"건강식품", u"칼슘·마그네슘·비타민D 90정", 21'800, Plain, u""},
    {u"건강식품", u"루테인 30캡슐", 25'500, Plain, u""},
    {u"건강식품", u"아카시아 벌꿀 1kg", 38'000, TaxFree, u""},
    {u"건강식품", u"프로폴리스 원액 30ml", 29'900, Plain, u""},
    {u"한방화장품", u"한방 비누 100g", 6'500, Plain, u""},
    {u"한방화장품", u"한방 샴푸 500ml", 22'000, Plain, u""},
    {u"한방화장품", u"자운고 크림 50g", 17'250, Plain, u"보습"},
    {u"한방화장품", u"한방 입욕제 10포", 18'500, Hidden, u"겨울 물품"},
    {u"생활·찜질", u"약쑥 좌훈 세트", 54'000, Plain, u""},
    {u"생활·찜질", u"쑥뜸기 가정용", 39'000, Plain, u""},
    {u"생활·찜질", u"팥 찜질팩", 16'500, Plain, u"전자레인지 2분"},
    {u"생활·찜질", u"경추 베개 (편백, 세탁 가능한 겉커버와 높이 조절 속통 포함) 대형", 68'000, Plain, u"색상 선택"},
    {u"생활·찜질", u"부항 세트 17구", 33'500, Plain, u""},
    {u"생활·찜질", u"지압 슬리퍼", 14'900, NotHandled, u"재고 소진"},
};

Product product(const Listed &listed, int index)
{
    Product result;
    result.category = QString::fromUtf16(listed.category);
    result.name = QString::fromUtf16(listed.name);
    result.price = listed.price;
    result.taxed = !(listed.marks & TaxFree);
    result.handled = !(listed.marks & NotHandled);
    if (listed.marks & Hidden)
        result.hidden = true;
    else if (index % 3 != 0)
        result.hidden = false;
    result.memo = QString::fromUtf16(listed.memo);
    result.added = QDate(2019, 3, 4).addDays(qint64(index) * 13);
    return result;
}

} // namespace

int listedProducts()
{
    return int(std::size(shelf));
}

std::vector<Product> products(int count)
{
    std::vector<Product> list;
    list.reserve(std::size_t(count));
    for (int index = 0; index < count; ++index) {
        const int series = index / listedProducts();
        Product next = product(shelf[index % listedProducts()], index % listedProducts());
        if (series > 0) {
            Random random(static_cast<std::uint64_t>(index));
            next.name += QStringLiteral(" %1호").arg(series);
            next.price = (next.price * random.between(60, 160) / 100 + 99) / 100 * 100;
            next.handled = !random.percent(8);
            next.hidden = random.percent(5);
        }
        list.push_back(next);
    }
    return list;
}

std::vector<Dealer> dealers()
{
    const auto dealer = [](const char16_t *name, const char *registration, const char *phone, const char16_t *address,
                           const char16_t *memo, bool trading) {
        return Dealer{QString::fromUtf16(name),    QString::fromLatin1(registration), QString::fromLatin1(phone),
                      QString::fromUtf16(address), QString::fromUtf16(memo),          trading};
    };
    return {
        dealer(u"한들 약재", "000-81-00011", "02-0960-1101", u"서울특별시 동대문구 한약로 12", u"매주 화요일 배송",
               true),
        dealer(u"금빛 홍삼", "000-81-00024", "041-0750-2202", u"충청남도 금산군 금산읍 인삼로 40", u"", true),
        dealer(u"산내들 식품", "000-86-00037", "063-0540-3303", u"전북특별자치도 진안군 진안읍 마이로 7", u"월말 정산",
               true),
        dealer(u"늘푸른 건강", "000-88-00040", "031-0780-4404", u"경기도 성남시 분당구 판교로 220", u"", true),
        dealer(u"온기 찜질용품", "000-02-00053", "053-0610-5505", u"대구광역시 중구 약령길 33", u"", true),
        dealer(u"NATURE CM 코스메틱", "000-87-00066", "02-0540-6606", u"서울특별시 강남구 도산대로 101", u"샘플 제공",
               true),
        dealer(u"바다 함초", "000-03-00079", "061-0240-7707", u"전라남도 신안군 압해읍 해변로 5", u"공급 중단", false),
    };
}

} // namespace sample
