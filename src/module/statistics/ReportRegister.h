#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The reports that a clinic has of its own, beside the five: a text file whose lines name them.
///
///     # caption | group | program identifier
///     요일별 매출 통계 | 매출 관련 통계 | ClinicWeekdays.clsClinicWeekdays
struct ReportRegister
{
    struct Report
    {
        QString caption;
        QString group; ///< caption of the node above it
        QString programId;
    };
    QList<Report> reports; ///< in the order of the lines
    QStringList remarks;   ///< what could not be used, for the user

    /// Where it lies: one for all users of the machine, then the user's own; those that are there.
    static QStringList files();
    /// Reads these files. A line that cannot be used is passed over and remarked on; so is one whose report is among the
    /// `told` identifiers or stood before. A report whose component is not installed is taken, and remarked on. Raises nothing.
    static ReportRegister read(const QStringList &files, const QStringList &told);
};
