#pragma once

/// What a screen reader gets of a canvas, which is a drawing, and of its `SelectionFrame`: the entry of a
/// list, which has the focus while its canvas has it.
namespace AccessibleCanvas
{

/// Makes both known, once for the process, however many windows there are.
void install();

} // namespace AccessibleCanvas
