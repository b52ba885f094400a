#pragma once

#include "printing/PageReceipts.h"
#include "printing/RollReceipt.h"
#include "settings/clsProperties.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/Paper.h"
#include "tests/support/SaleDatabase.h"

#include "data/clsSQL.h"

/// A shop with its data written down and one customer; orders are written by another desk.
class ReceiptDesk : public SaleDatabase
{
protected:
    ReceiptDesk()
    {
        const QString texts[][2] = {
            {QStringLiteral("지점명"), QStringLiteral("젤보한의원")},
            {QStringLiteral("지점대표자"), QStringLiteral("허준")},
            {QStringLiteral("지점사업자번호"), QStringLiteral("123-45-67890")},
            {QStringLiteral("지점주소"), QStringLiteral("서울시종로구세종대로1")},
            {QStringLiteral("지점전화번호"), QStringLiteral("02-123-4567")},
            {QStringLiteral("홈페이지주소"), QStringLiteral("www.zelvo.example")},
            {QStringLiteral("영수증고객안내문"), QStringLiteral("영수증이 있으면 교환/환불시 보다 편리합니다.")}};
        clsProperties properties;
        for (const auto &[key, value] : texts)
            properties.PropValue(key, value);
        session_.customer.name = QStringLiteral(" 남궁보람 ");
        gstrAppPath = program_.path() + QLatin1Char('/');
    }

    void openOrders()
    {
        session_.rsCustSaleMaster = std::make_unique<ado::Recordset>();
        session_.rsCustSaleMaster->Open(clsSQL().getOrderMasterSQL(Patient), gcnnMasterDB, ado::CursorType::Keyset,
                                        ado::LockType::Optimistic);
    }
    void ledger(int orderKey, int operation, int money, const char *method = "'00'")
    {
        atOtherDesk(QStringLiteral(
                        "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                        "tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES (41, %1, '2026-11-24', %2, %3, %4)")
                        .arg(orderKey)
                        .arg(operation)
                        .arg(money)
                        .arg(QLatin1String(method)));
    }
    Paper orderPaper()
    {
        openOrders();
        return Paper::of(PageReceipts(session_, nullptr).orderReceipt());
    }
    Paper periodPaper(const QDate &start, const QDate &end)
    {
        openOrders();
        return Paper::of(PageReceipts(session_, nullptr).periodReceipt(start, end));
    }
    RollReceiptOrder rollOrder(int key, const char *date = Today) const
    {
        return {gcnnMasterDB, Patient, session_.customer.name, key,
                QDate::fromString(QLatin1String(date), Qt::ISODate)};
    }
    Paper rollPaper(int key) { return Paper::of(rollReceipt(rollOrder(key), print::endlessRoll(80))); }

    QTemporaryDir program_;
};
