{ El programa más corto en Free Pascal: una tabla en memoria, de la que se elige un artículo y en la que se busca. }
program Seleccion;
{$mode delphi}{$apptype console}{$codepage utf8}
uses Windows, SysUtils, Variants, ActiveX, ComObj;

function VariantCopyInd(var destino: TVarData; origen: Pointer): HRESULT; stdcall; external 'oleaut32.dll';

type
  TArgumentos = array of Variant;

  { Lo que el anfitrión da a los diálogos: cada objeto dice sus miembros y los atiende por su lugar en esa lista. }
  TObjeto = class(TInterfacedObject, IDispatch)
  protected
    Miembros: array of string;
    function Atiende(miembro: Integer; const a: TArgumentos): Variant; virtual; abstract;
  public
    function GetTypeInfoCount(out count: LongInt): HRESULT; stdcall;
    function GetTypeInfo(index, locale: LongInt; out info): HRESULT; stdcall;
    function GetIDsOfNames(const id: TGUID; names: Pointer; count, locale: LongInt; ids: Pointer): HRESULT; stdcall;
    function Invoke(miembro: LongInt; const id: TGUID; locale: LongInt; flags: Word; var parametros; resultado, error,
      cual: Pointer): HRESULT; stdcall;
  end;

  { Del registro actual; también sirve de columna. }
  TCampo = class(TObjeto)
    Numero: Integer;
    constructor Create(n: Integer);
    function Atiende(miembro: Integer; const a: TArgumentos): Variant; override;
  end;
  TCampos = class(TObjeto)
    constructor Create;
    function Atiende(miembro: Integer; const a: TArgumentos): Variant; override;
  end;
  { La clase de datos, que es su propio conjunto de registros. }
  TTabla = class(TObjeto)
    constructor Create;
    function Atiende(miembro: Integer; const a: TArgumentos): Variant; override;
  end;
  { El control que pide el registro, y quien recibe la respuesta. }
  TPantalla = class(TObjeto)
    constructor Create;
    function Atiende(miembro: Integer; const a: TArgumentos): Variant; override;
  end;

const
  Nombres: array[0..1] of string = ('Codigo', 'Nombre');
  Filas: array[1..3, 0..1] of string = (('A-1', 'Tornillo'), ('A-2', 'Tuerca'), ('A-3', 'Arandela'));

var
  Actual: Integer = 1;
  Elegido, Filtro: string;

function TObjeto.GetTypeInfoCount(out count: LongInt): HRESULT; stdcall;
begin
  count := 0;
  Result := S_OK;
end;

function TObjeto.GetTypeInfo(index, locale: LongInt; out info): HRESULT; stdcall;
begin
  Result := E_NOTIMPL;
end;

function TObjeto.GetIDsOfNames(const id: TGUID; names: Pointer; count, locale: LongInt; ids: Pointer): HRESULT; stdcall;
var
  i: Integer;
begin
  for i := 0 to High(Miembros) do
    if SameText(Miembros[i], string(PPWideChar(names)^)) then
    begin
      PLongInt(ids)^ := i;
      Exit(S_OK);
    end;
  Result := DISP_E_UNKNOWNNAME;
end;

function TObjeto.Invoke(miembro: LongInt; const id: TGUID; locale: LongInt; flags: Word; var parametros; resultado, error,
  cual: Pointer): HRESULT; stdcall;
var
  dados: TDispParams absolute parametros;
  argumentos: TArgumentos;
  uno: OleVariant;
  i: Integer;
begin
  uno := Unassigned;
  try
    SetLength(argumentos, dados.cArgs);
    for i := 0 to dados.cArgs - 1 do // llegan del último al primero
    begin
      VariantCopyInd(TVarData(uno), @dados.rgvarg^[dados.cArgs - 1 - i]);
      argumentos[i] := uno;
    end;
    uno := Atiende(miembro, argumentos);
    if resultado <> nil then
      POleVariant(resultado)^ := uno;
    Result := S_OK;
  except
    Result := E_FAIL;
  end;
end;

constructor TCampo.Create(n: Integer);
begin
  Numero := n;
  Miembros := ['Name', 'Caption', 'DataField', 'Value'];
end;

function TCampo.Atiende(miembro: Integer; const a: TArgumentos): Variant;
begin
  if miembro = 3 then
    Result := Filas[Actual, Numero]
  else
    Result := Nombres[Numero];
end;

constructor TCampos.Create;
begin
  Miembros := ['Count', 'Item'];
end;

function TCampos.Atiende(miembro: Integer; const a: TArgumentos): Variant;
begin
  if miembro = 0 then
    Result := 2
  else
    Result := IDispatch(TCampo.Create(a[0]));
end;

constructor TTabla.Create;
begin
  Miembros := ['sClassName', 'RecordCount', 'BOF', 'EOF', 'AbsolutePosition', 'Fields', 'MoveNext', 'ValidaKey', 'ValidaValue',
    'ValidaDefinedSize', 'CreateFilter', 'SetFilter', 'GetFilter', 'MoveFirst', 'Requery', 'FindRecord', 'AplyFilter'];
end;

function TTabla.Atiende(miembro: Integer; const a: TArgumentos): Variant;
begin
  Result := Unassigned;
  case miembro of
    0: Result := 'articulos';
    1: Result := Length(Filas);
    2: Result := Actual < 1;
    3: Result := Actual > Length(Filas);
    4:
      if Length(a) > 0 then // se escribe
        Actual := a[0]
      else
        Result := Actual;
    5: Result := IDispatch(TCampos.Create);
    6: Inc(Actual);
    7, 8: Result := True;
    9: Result := 20;
    10:
      if a[0].Text <> '' then
        Result := a[0].DataField + '=' + a[0].Text;
    11: Filtro := a[0];
    12: Result := Filtro;
  else
    Actual := 1;
  end;
end;

constructor TPantalla.Create;
begin
  Miembros := ['Text', 'AceptarSeleccion', 'AceptarBuscar'];
end;

function TPantalla.Atiende(miembro: Integer; const a: TArgumentos): Variant;
begin
  Result := '';
  if miembro = 1 then
    Elegido := a[2];
end;

var
  dialogos, pantalla, articulos, columnas: OleVariant;
begin
  pantalla := IDispatch(TPantalla.Create);
  articulos := IDispatch(TTabla.Create);
  columnas := IDispatch(TCampos.Create);
  dialogos := CreateOleObject('Tamvelo.ClsShowSerch');
  dialogos.ShowSelec(pantalla, articulos, pantalla);
  WriteLn('Elegido: ', Elegido);
  dialogos.ShowBuscar(pantalla, articulos, columnas);
  WriteLn('Filtro: ', Filtro);
end.
