#include "settings/GridLayouts.h"

#include "platform/runtime/ProgramFolder.h"
#include "tests/support/MessageRecorder.h"

#include <QFile>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

const QStringList gridNames = {QStringLiteral("tdbSaleProductLists"), QStringLiteral("tdbCustSaleMaster"),
                               QStringLiteral("tdbCustSaleDetails"), QStringLiteral("tdbCustTranManage")};
const QStringList layoutFiles = {
    QStringLiteral("Grid.SaleProductListsLayoutFile.tdb"), QStringLiteral("Grid.CustSaleMasterLayoutFile.tdb"),
    QStringLiteral("Grid.CustSaleDetailsLayoutFile.tdb"), QStringLiteral("Grid.CustTranManageLayourFile.tdb")};

constexpr int designedWidth = 90;
constexpr int usersWidth = 211;

/// Two grids of a name stand for two starts of the program.
struct Grid : controls::RecordsetGrid
{
    explicit Grid(const QString &name)
    {
        setObjectName(name);
        setColumns({{.field = QStringLiteral("a"), .caption = QStringLiteral("가"), .width = designedWidth},
                    {.field = QStringLiteral("b"), .caption = QStringLiteral("나"), .width = designedWidth},
                    {.field = QStringLiteral("c"), .caption = QStringLiteral("다"), .width = designedWidth}});
        keepGridLayout(*this);
    }
    void resizeByUser()
    {
        resize(600, 120);
        show();
        QWidget *header = horizontalHeader()->viewport();
        const QPoint edge(designedWidth - 2, header->height() / 2);
        const QPoint wider = edge + QPoint(usersWidth - designedWidth, 0);
        QTest::mousePress(header, Qt::LeftButton, {}, edge);
        QTest::mouseMove(header, (edge + wider) / 2);
        QTest::mouseMove(header, wider);
        QTest::mouseRelease(header, Qt::LeftButton, {}, wider);
    }
    int width() const { return horizontalHeader()->sectionSize(0); }
};

class KeptLayouts : public testing::Test
{
protected:
    KeptLayouts() { runtime::setProgramFolder(folder_.path()); }
    ~KeptLayouts() override { runtime::setProgramFolder({}); }
    static QStringList stored()
    {
        QStringList found;
        for (const QString &file : layoutFiles) {
            if (QFile::exists(runtime::programFolder() + file))
                found << file;
        }
        return found;
    }

    QTemporaryDir folder_;
    MessageRecorder boxes_;
};

} // namespace

TEST_F(KeptLayouts, AreSavedBesideTheProgramWhenTheUserChangesThem)
{
    for (qsizetype i = 0; i < gridNames.size(); ++i) {
        Grid grid(gridNames[i]);
        emit grid.layoutChanged(false);
        EXPECT_EQ(stored(), layoutFiles.first(i));
        grid.resizeByUser();
        EXPECT_EQ(stored(), layoutFiles.first(i + 1));
        EXPECT_EQ(Grid(gridNames[i]).width(), usersWidth);
    }
    Grid(QStringLiteral("tdbCompanyMaster")).resizeByUser();
    EXPECT_EQ(Grid(QStringLiteral("tdbCompanyMaster")).width(), designedWidth);
}

TEST_F(KeptLayouts, AreTheUsersOwnWhereTheProgramsFolderTakesNoFiles)
{
    qputenv("XDG_DATA_HOME", folder_.path().toLocal8Bit());
    for (const char *folder :
         {"/proc", "/usr/bin"}) { // not writable, and not to be written to even by an administrator
        runtime::setProgramFolder(QString::fromLatin1(folder));
        EXPECT_TRUE(runtime::programFolder().startsWith(folder_.path())) << folder;
        Grid(gridNames[0]).resizeByUser();
        EXPECT_EQ(stored(), layoutFiles.first(1)) << folder;
        EXPECT_EQ(Grid(gridNames[0]).width(), usersWidth) << folder;
        QFile::remove(runtime::programFolder() + layoutFiles[0]);
    }
    qunsetenv("XDG_DATA_HOME");
}

TEST_F(KeptLayouts, AreResetForTheNextStartWhenTheUserSaysYes)
{
    Grid first(gridNames[0]);
    Grid third(gridNames[2]);
    first.resizeByUser();
    third.resizeByUser();
    resetGridLayouts({&first, &third});
    EXPECT_EQ(stored().size(), 2);
    boxes_.answers = {controls::Answer::Yes};
    resetGridLayouts({&first, &third});
    EXPECT_EQ(stored(), QStringList());
    EXPECT_EQ(first.width(), usersWidth) << "what is on the screen stays until the program starts anew";
    EXPECT_EQ(Grid(gridNames[0]).width(), designedWidth);
    const QString question = QStringLiteral("그리드 레이아웃을 리셋하시겠습니까?");
    EXPECT_EQ(boxes_.texts(),
              QStringList(
                  {question, question, QStringLiteral("리셋된 레이아웃 적용을 하기위해 프로그램을 재시작 하십시오.")}));
    EXPECT_EQ(boxes_.messages.last().title, QStringLiteral("프로그램 재시작"));
}
