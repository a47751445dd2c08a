#pragma once

/// What a screen reader gets of a `NoticeLine`: an alert that can be pressed and gone through.
namespace AccessibleNotice
{

/// Makes it known, once for the process, however many windows there are.
void install();

} // namespace AccessibleNotice
