#pragma once

#include "documents/export/PdfFile.h"
#include "documents/report/PictureLabels.h"

#include <QHash>
#include <QSizeF>

/// The pictures of a PDF: each is written once, as the lines and areas it is made of, however often it is
/// shown.
class PdfPictures {
  public:
    explicit PdfPictures(PdfFile& written) : file(written) {}

    struct Picture {
        QByteArray name; // in the resources; its unit is a unit of the picture, its corner the upper left
        QSizeF size;     // as the picture asks for it
        QRectF view;     // in its own units
        QList<PictureLabel> labels;
    };
    const Picture& picture(const QByteArray& svg);
    /// The names and objects for the resources of the pages.
    const QByteArray& names() const { return resources; }

  private:
    PdfFile& file;
    QByteArray resources;
    QHash<QByteArray, Picture> known;
};
