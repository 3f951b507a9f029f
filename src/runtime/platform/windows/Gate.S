# The gates of companion calls, one for each number of arguments:
#
#     Result pellGateN(arguments ..., Result (*function)(arguments ...))
#
# calls the function with the N arguments that stand before it, whatever their types, and returns what it returns. It is
# what Microsoft's C compiler makes of
#
#     __try { return function(arguments ...); } __except (pellFilter(...)) { pellThrowForeignException(); }
#
# which GCC has not got. When an exception passes, the system's __C_specific_handler finds the range below and asks
# pellFilter; if that says so, the functions that were called from here are unwound, each with its own clean-up, and
# execution goes on at .Lcaught.
#
# Each argument takes one place: the first four a register, by their position, the others 8 bytes of the caller's stack,
# above 32 bytes that belong to the called function. So the registers are passed on untouched, the stack's part is
# copied, and the place behind the last argument has the function.

    .macro gate count
    .if \count > 4
    .set onStack, \count - 4
    .else
    .set onStack, 0
    .endif
    .set frame, 40 + onStack / 2 * 16       # keeps the stack aligned to 16 bytes
    .globl  pellGate\count
    .def    pellGate\count
    .scl    2
    .type   32
    .endef
    .seh_proc pellGate\count
    .seh_handler __C_specific_handler, @except
pellGate\count:
    subq    $frame, %rsp
    .seh_stackalloc frame
    .seh_endprologue
    .set place, 32
    .rept onStack
    movq    frame + 8 + place(%rsp), %rax
    movq    %rax, place(%rsp)
    .set place, place + 8
    .endr
.Lfrom\@:
    .if \count == 0
    call    *%rcx
    .elseif \count == 1
    call    *%rdx
    .elseif \count == 2
    call    *%r8
    .elseif \count == 3
    call    *%r9
    .else
    call    *frame + 8 + 8 * \count(%rsp)
    .endif
    nop                                     # in the range, since the call returns to it
.Lto\@:
    addq    $frame, %rsp
    ret
.Lcaught\@:
    call    pellThrowForeignException
    nop
    .seh_handlerdata
    .long   1
    .rva    .Lfrom\@, .Lto\@, pellFilter, .Lcaught\@
    .text
    .seh_endproc
    .endm

    .text
    .irp count, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12
    gate \count
    .endr
