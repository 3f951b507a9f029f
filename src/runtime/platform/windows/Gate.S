# bool pellCallGuarded(void (*call)(void*), void* context)
#
# What Microsoft's C compiler makes of
#
#     __try { call(context); return true; } __except (pellFilter(...)) { return false; }
#
# which GCC has not got. When an exception passes, the system's __C_specific_handler finds the range below and asks
# pellFilter; if that says so, the functions that were called from here are unwound, each with its own clean-up, and
# execution goes on at .Lcaught.

    .text
    .globl  pellCallGuarded
    .def    pellCallGuarded
    .scl    2
    .type   32
    .endef
    .seh_proc pellCallGuarded
    .seh_handler __C_specific_handler, @except
pellCallGuarded:
    subq    $40, %rsp           # 32 bytes that belong to the called function, and alignment
    .seh_stackalloc 40
    .seh_endprologue
    movq    %rcx, %rax
    movq    %rdx, %rcx
.Lfrom:
    call    *%rax
    movl    $1, %eax            # in the range, since the call returns to this instruction
.Lto:
    addq    $40, %rsp
    ret
.Lcaught:
    xorl    %eax, %eax
    addq    $40, %rsp
    ret
    .seh_handlerdata
    .long   1
    .rva    .Lfrom, .Lto, pellFilter, .Lcaught
    .text
    .seh_endproc
