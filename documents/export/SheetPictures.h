#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// The pictures of a workbook's sheets, as records of the binary spreadsheet format. A sheet with filters
/// cannot have any.
class SheetPictures {
  public:
    /// A corner of a picture: a cell, and how far into it, in shares of its width and height.
    struct Corner {
        int row = 0;
        int column = 0;
        double down = 0;
        double across = 0;
    };

    /// Adds a PNG picture to a sheet, counted from 0. The same picture is kept once.
    void add(int sheet, const QByteArray& png, const QString& description, const Corner& upperLeft,
             const Corner& lowerRight);
    bool isEmpty() const { return images.isEmpty(); }
    /// What the workbook keeps for all of its sheets.
    QByteArray ofWorkbook(int sheets) const;
    QByteArray ofSheet(int sheet) const;

  private:
    struct Placed {
        int image = 0; // counted from 1
        QString description;
        Corner upperLeft;
        Corner lowerRight;
    };

    QHash<int, QList<Placed>> placed; // by sheet
    QList<QByteArray> images;
    QList<int> uses; // of each image
    QHash<QByteArray, int> known;
};
