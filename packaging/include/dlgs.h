// Deliberately empty. The system header of this name, which windows.h pulls in, defines macros such as
// rad1, lst1, edt1, cmb1, psh1 and ico1; a program's control of such a name would not compile.
