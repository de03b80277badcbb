# Finishes the pages that Doxygen made: tables get room of their own to scroll in, so that no page does sideways; the
# index of the search is written; and every link within the pages is followed.
#     perl docs/doxygen/acaba.pl FOLDER
# Ends with 1 and names them when links lead nowhere.
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));

my $carpeta = shift or die "which folder?\n";
my @paginas = sort(glob("$carpeta/*.html"), glob("$carpeta/cpp/*.html"));
my (%texto, %anclas);

sub lee {
    open my $fichero, '<', $_[0] or die "$_[0]: $!\n";
    local $/;
    return scalar <$fichero>;
}

sub sin_marcas {
    my ($trozo) = @_;
    $trozo =~ s/<[^>]*>/ /g;
    $trozo =~ s/&#160;|&nbsp;/ /g;
    $trozo =~ s/&lt;/</g;
    $trozo =~ s/&gt;/>/g;
    $trozo =~ s/&quot;/"/g;
    $trozo =~ s/&#(\d+);/chr $1/ge;
    $trozo =~ s/&amp;/&/g;
    $trozo =~ s/&[a-z]+;/ /g;
    $trozo =~ s/[\s\x{200b}]+/ /g;
    $trozo =~ s/^ | $//g;
    return $trozo;
}

for my $pagina (@paginas) {
    my $todo = lee($pagina);
    $todo =~ s{(<table class="(?:markdownTable|doxtable|fieldtable)">.*?</table>)}{<div class="tabla">$1</div>}gs
        unless $todo =~ /<div class="tabla">/;
    # In a table of contents Doxygen shows its marks as text.
    $todo =~ s{&lt;(/?)tt&gt;}{<$1code>}g;
    # Doxygen leads to a list of macros also where it does not make one.
    $todo =~ s{<a href="#define-members">[^<]*</a>(?: &#124;)?}{}g unless $todo =~ /name="define-members"/;
    $texto{$pagina} = $todo;
    $anclas{$pagina}{$1} = 1 while $todo =~ /\b(?:id|name)="([^"]+)"/g;
}
# Where each function of the C headers is described: its name in code leads there.
my %funcion;
for my $pagina (grep { m{/[^/]*_8h\.html$} && !m{/cpp/} } @paginas) {
    my ($nombre) = $pagina =~ m{([^/]*)$};
    $funcion{$2} //= "$nombre#$1"
        while $texto{$pagina} =~ m{<a id="([^"]+)"[^>]*></a>\s*<h2 class="memtitle">.*?</span>(\w+)\(\)}gs;
}
die "no function was found\n" unless keys %funcion > 300;
for my $pagina (@paginas) {
    my $arriba = $pagina =~ m{/cpp/} ? '../' : '';
    $texto{$pagina} =~ s{(<a [^>]*>.*?</a>)|<code>(\w+)((?:\(\))?)</code>}
        {defined $1 ? $1 : $funcion{$2} ? qq(<a href="$arriba$funcion{$2}"><code>$2$3</code></a>) : "<code>$2$3</code>"}gse;
    # Doxygen gives no place to friends, which its own indexes lead to: their class is the place.
    (my $aqui = $pagina) =~ s{[^/]*$}{};
    $texto{$pagina} =~ s{href="(class[^"#]+\.html)#(\w+)"}{$anclas{"$aqui$1"}{$2} ? qq(href="$1#$2") : qq(href="$1")}ge
        if $pagina =~ m{/(?:functions[^/]*|[^/]*-members)\.html$};
    open my $fichero, '>', $pagina or die "$pagina: $!\n";
    print $fichero $texto{$pagina};
    close $fichero;
}

# The index: a function or class member, or a section of a page, is one place.
my @indice;
sub anota {
    my ($direccion, $titulo, $trozo) = @_;
    my $dicho = sin_marcas($trozo);
    push @indice, [$direccion, sin_marcas($titulo), $dicho] if $dicho ne '' && $titulo ne '';
}
for my $pagina (@paginas) {
    (my $direccion = $pagina) =~ s{^\Q$carpeta\E/}{};
    next if $direccion =~ m{(?:^|/)(?:globals|functions|namespacemembers|dir_|files|annotated|classes|pages|hierarchy|namespaces)|-members\.html$};
    my $todo = $texto{$pagina};
    next unless $todo =~ s{.*?<div class="contents">}{}s;
    $todo =~ s{<footer>.*}{}s;
    $todo =~ s{<div class="toc">.*?</div>}{}s;
    my ($titulo) = $texto{$pagina} =~ m{<div class="title">(.*?)</div>}s;
    $titulo = sin_marcas($titulo // $direccion);
    # Members, each with its anchor, those of a class with its name.
    my ($de_clase) = $titulo =~ /^(?:lumodir::)?(\S+?)(?:<.*>)? (?:Class|Struct)\b/;
    my $delante = defined $de_clase ? "$de_clase: " : '';
    my $es_de_codigo = $todo =~ s{<a id="([^"]+)"[^>]*></a>\s*<h2 class="memtitle">(.*?)</h2>\s*<div class="memitem">(.*?)</div>\s*</div>(?=\s*(?:<a id=|</div>|<h2|<hr))}
        {my ($ancla, $nombre, $cuerpo) = ($1, $2, $3); $nombre =~ s{<span class="permalink">.*?</span>}{}s; anota("$direccion#$ancla", "$delante$nombre", $cuerpo); ''}gse;
    # The declarations above them say it all once more.
    $todo =~ s{<table class="memberdecls">.*?</table>}{}gs if $es_de_codigo;
    my @trozos = split m{(<h[1-4][^>]*>.*?</h[1-4]>)}s, $todo;
    my ($ancla, $nombre, $cuerpo) = ('', $titulo, '');
    for my $trozo (@trozos) {
        if ($trozo =~ m{^<h[1-4]} && $trozo =~ m{id="([^"]+)"}) {
            anota($direccion . ($ancla eq '' ? '' : "#$ancla"), $nombre, $cuerpo);
            ($ancla, $nombre, $cuerpo) = ($1, "$titulo: " . sin_marcas($trozo), '');
        } else {
            $cuerpo .= $trozo;
        }
    }
    anota($direccion . ($ancla eq '' ? '' : "#$ancla"), $nombre, $cuerpo);
}
sub literal {
    my ($cadena) = @_;
    $cadena =~ s/(["\\])/\\$1/g;
    $cadena =~ s/</\\u003c/g;
    return "\"$cadena\"";
}
open my $salida, '>', "$carpeta/indice.js" or die "indice.js: $!\n";
print $salida "var LUMODIR_PAGINAS = [\n";
print $salida '{u:', literal($_->[0]), ',t:', literal($_->[1]), ',x:', literal($_->[2]), "},\n" for @indice;
print $salida "];\n";
close $salida;

# The links.
my ($seguidos, @muertos) = (0);
for my $pagina (@paginas) {
    (my $aqui = $pagina) =~ s{[^/]*$}{};
    while ($texto{$pagina} =~ /\b(?:href|src)="([^"]*)"/g) {
        my $enlace = $1;
        next if $enlace =~ /^(?:[a-z]+:|$)/;
        $seguidos++;
        my ($fichero, $parte) = split /#/, $enlace, 2;
        my $destino = $fichero eq '' ? $pagina : $aqui . $fichero;
        1 while $destino =~ s{[^/]+/\.\./}{};
        $parte =~ s/%([0-9a-fA-F]{2})/chr hex $1/ge if defined $parte;
        if (!-e $destino && $fichero ne '') {
            push @muertos, "$pagina: $enlace";
        } elsif (defined $parte && $parte ne '' && exists $anclas{$destino} && !$anclas{$destino}{$parte}) {
            push @muertos, "$pagina: $enlace";
        }
    }
}
if (@muertos) {
    my %vistos;
    print STDERR "dead link: $_\n" for grep { !$vistos{$_}++ } @muertos;
    exit 1;
}
printf "%d pages, %d places in the index, %d links followed\n", scalar @paginas, scalar @indice, $seguidos;
