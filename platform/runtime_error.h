#pragma once
// A failure the VB runtime would raise. Normal outcomes are messages; this is
// only for the places where the old program really stopped with a run-time
// error box. Every UI event entry point catches it (see ui_guard.h).
#include <QString>
#include <exception>

namespace zor {

class RuntimeError : public std::exception {
public:
    RuntimeError(int number, QString text) : number_(number), text_(std::move(text)) {}
    int Number() const { return number_; }
    const QString& Text() const { return text_; }
    // The text of the box the runtime showed.
    QString BoxText() const { return QStringLiteral("Run-time error '%1':\n\n%2").arg(number_).arg(text_); }
    const char* what() const noexcept override { return "RuntimeError"; }

    static RuntimeError InvalidProcedureCall() { return {5, QStringLiteral("Invalid procedure call or argument")}; }
    static RuntimeError Overflow() { return {6, QStringLiteral("Overflow")}; }
    static RuntimeError SubscriptOutOfRange() { return {9, QStringLiteral("Subscript out of range")}; }
    static RuntimeError TypeMismatch() { return {13, QStringLiteral("Type mismatch")}; }
    static RuntimeError FileNotFound() { return {53, QStringLiteral("File not found")}; }
    static RuntimeError FileAlreadyOpen() { return {55, QStringLiteral("File already open")}; }
    static RuntimeError FileAlreadyExists() { return {58, QStringLiteral("File already exists")}; }
    static RuntimeError PermissionDenied() { return {70, QStringLiteral("Permission denied")}; }
    static RuntimeError PathFileAccessError() { return {75, QStringLiteral("Path/File access error")}; }
    static RuntimeError PathNotFound() { return {76, QStringLiteral("Path not found")}; }

private:
    int number_;
    QString text_;
};

}  // namespace zor
