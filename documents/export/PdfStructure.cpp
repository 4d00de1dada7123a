#include "documents/export/PdfStructure.h"

#include "core/base/PdfText.h"

using PdfWords::reference;

PdfStructure::PdfStructure(PdfFile& written, int ofPages)
    : file(written), root(file.reserve()), pageCount(ofPages) {
    begin("Document");
}

void PdfStructure::begin(const char* kind, const QByteArray& entries) {
    const int number = file.reserve();
    if (!open.empty()) {
        reference(open.back().parts, number);
        open.back().parts += ' ';
    }
    open.push_back({number, kind, entries, {}, false});
}

void PdfStructure::end() {
    const Element& element = open.back();
    record.resize(0);
    record += "<</Type/StructElem/S/";
    record += element.kind;
    record += "/P ";
    reference(record, open.size() > 1 ? open[open.size() - 2].number : root);
    if (element.onPage) {
        record += "/Pg ";
        reference(record, page);
    }
    if (!element.parts.isEmpty()) {
        record += "/K[";
        record += element.parts;
        record += ']';
    }
    record += element.entries;
    record += ">>";
    file.write(element.number, record);
    open.pop_back();
}

int PdfStructure::content() {
    Element& element = open.back();
    const auto number = int(owners.size());
    PdfWords::integer(element.parts, number);
    element.parts += ' ';
    element.onPage = true;
    owners.append(element.number);
    return number;
}

int PdfStructure::annotation(int object) {
    Element& element = open.back();
    element.parts += "<</Type/OBJR/Pg " + reference(page) + "/Obj " + reference(object) + ">> ";
    annotationOwners.push_back(element.number);
    return pageCount + int(annotationOwners.size()) - 1;
}

void PdfStructure::beginPage(int object) {
    page = object;
    owners.clear();
}

void PdfStructure::endPage() {
    QByteArray list = "[";
    for (const int owner : owners) {
        reference(list, owner);
        list += ' ';
    }
    pageOwners += QByteArray::number(pages++) + ' ' + reference(file.add(list + ']')) + ' ';
}

int PdfStructure::finish() {
    const int document = open.front().number;
    while (!open.empty())
        end();
    QByteArray tree = "<</Nums[" + pageOwners;
    int key = pageCount;
    for (const int owner : annotationOwners)
        tree += QByteArray::number(key++) + ' ' + reference(owner) + ' ';
    file.write(root, "<</Type/StructTreeRoot/K " + reference(document) + "/ParentTree " +
                         reference(file.add(tree + "]>>")) + "/ParentTreeNextKey " + QByteArray::number(key) +
                         ">>");
    return root;
}

QByteArray PdfStructure::insteadOf(const QString& text) {
    return "/Alt" + pdfText(text);
}

QByteArray PdfStructure::bounds(const QRectF& place, double pageHeight) {
    QByteArray entry = "/A<</O/Layout/BBox[";
    PdfWords::numbers(entry,
                      {place.left(), pageHeight - place.bottom(), place.right(), pageHeight - place.top()});
    return entry + "]>>";
}
