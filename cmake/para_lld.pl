# Writes a copy of GNU's C++ library from which LLD takes everything that it needs:
#     perl para_lld.pl LIBRARY COPY
# Of a function that several objects may bring along the linker keeps one, with what belongs to it. Whose unwinding table
# a section .pdata$NAME is, LLD learns by the section's own symbol; Debian has stripped these from its library, since
# nothing names them. So LLD leaves those tables out, and an exception that comes through such a function of the library
# (the memory for a std::wstring runs out) ends the process. Here each gets its symbol back.
use strict;
use warnings;

use constant {
    PARA_X64   => 0x8664,
    UNO_DE_VARIOS => 0x1000,    # a section of which one copy is kept
    ESTATICO   => 3,            # kind of symbol
    CUALQUIERA => 2,            # any of the copies
    POR_SECCION => 40,          # bytes of their records
    POR_SIMBOLO => 18,
};

my ($de, $a) = @ARGV;

sub lee {
    open(my $fichero, '<:raw', $_[0]) or die "$_[0]: $!\n";
    local $/;
    return <$fichero>;
}

# An object with the symbols of its unwinding tables.
sub con_simbolos {
    my ($objeto) = @_;
    my ($para, $secciones, undef, $donde, $simbolos, $opcional) = unpack('v v V V V v', $objeto);
    return $objeto if $para != PARA_X64 || $donde == 0;
    my $textos = $donde + $simbolos * POR_SIMBOLO;

    my %con_suyo;
    for (my $i = 0; $i < $simbolos; ++$i) {
        my ($valor, $seccion, undef, $clase, $auxiliares) = unpack('x8 V v v C C', substr($objeto, $donde + $i * POR_SIMBOLO, POR_SIMBOLO));
        $con_suyo{$seccion} = 1 if $clase == ESTATICO && $valor == 0 && $auxiliares > 0;
        $i += $auxiliares;
    }
    my $nuevos = '';
    for my $numero (1 .. $secciones) {
        my ($corto, $bytes, $reubicaciones, $marcas) =
            unpack('a8 x8 V x12 v x2 V', substr($objeto, 20 + $opcional + ($numero - 1) * POR_SECCION, POR_SECCION));
        # A name of more than 8 bytes stands among the texts, and so may that of its symbol.
        my ($largo) = $corto =~ m{^/(\d+)};
        my $nombre = defined $largo ? unpack('Z*', substr($objeto, $textos + $largo)) : unpack('Z8', $corto);
        next if $nombre !~ /^\.pdata\$/ || !($marcas & UNO_DE_VARIOS) || $con_suyo{$numero};
        $nuevos .= (defined $largo ? pack('V V', 0, $largo) : $corto) . pack('V v v C C', 0, $numero, 0, ESTATICO, 1);
        $nuevos .= pack('V v v V v C x3', $bytes, $reubicaciones, 0, 0, $numero, CUALQUIERA);
    }
    substr($objeto, 12, 4) = pack('V', $simbolos + length($nuevos) / POR_SIMBOLO);
    substr($objeto, $textos, 0) = $nuevos;
    return $objeto;
}

my $todo = lee($de);
$todo =~ s/^!<arch>\n// or die "$de is no library\n";
open(my $salida, '>:raw', $a) or die "$a: $!\n";
print $salida "!<arch>\n";
while (length $todo) {
    my ($nombre, $resto, $bytes) = unpack('a16 a32 A10', $todo);
    my $contenido = substr($todo, 60, $bytes);
    substr($todo, 0, 60 + $bytes + $bytes % 2) = '';
    next if $nombre =~ m{^/(SYM64/)? };    # the index, which is made anew
    $contenido = con_simbolos($contenido) if $nombre !~ m{^// };
    printf $salida "%s%s%-10d`\n%s%s", $nombre, $resto, length $contenido, $contenido, length($contenido) % 2 ? "\n" : '';
}
close($salida) or die "$a: $!\n";
